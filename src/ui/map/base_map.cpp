#include "ui/map/base_map.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <numbers>

#include "ui/map/flat_projection.h"
#include "ui/map/globe_projection.h"
#include "ui/map/globe_texture.h"
#include "ui/map/world_map.h"
#include "ui/theme.h"

namespace veloran {

namespace {

constexpr double kPixelsOff = 0.6;  // device pixels that a coastline may be off
constexpr int kGraticuleStep = 30;  // degrees
constexpr double kAirShare = 0.03;  // of the globe's radius

constexpr BaseMapColors kDarkColors = {.beyond = 0xff101216,
                                       .water = 0xff1a2330,
                                       .land = 0xff323c48,
                                       .coast = 0xff5b6b7d,
                                       .border = 0xff4a5765,
                                       .graticule = 0x14c8dcf0,
                                       .air = 0xff7fb4e6};
constexpr BaseMapColors kLightColors = {.beyond = 0xffe4e7eb,
                                        .water = 0xffd3e1ec,
                                        .land = 0xfff6f4ee,
                                        .coast = 0xff93a6b8,
                                        .border = 0xffc6c8c6,
                                        .graticule = 0x1c40607c,
                                        .air = 0xff6fa3d6};

// Over a picture of the Earth, whose own colours do not follow the theme.
constexpr QRgb kPictureCoast = 0xa0ffffff;
constexpr QRgb kPictureBorder = 0x70ffffff;

QColor color(QRgb rgba) {
    return QColor::fromRgba(rgba);
}

void append(QPainterPath& path, const ScreenLine& line) {
    path.moveTo(line.front().x, line.front().y);
    for (std::size_t i = 1; i < line.size(); ++i) path.lineTo(line[i].x, line[i].y);
}

void fillLand(QPainter& painter, const MapProjection& projection, const WorldLevel& world,
              QRgb land) {
    QPainterPath path;  // odd and even: a ring inside another is a lake
    for (const GeoRing& ring : world.land) {
        for (const ScreenLine& part : projection.area(ring)) {
            append(path, part);
            path.closeSubpath();
        }
    }
    painter.fillPath(path, color(land));
}

void strokeLines(QPainter& painter, const MapProjection& projection,
                 const std::vector<GeoRing>& lines, QRgb rgba, double width) {
    QPainterPath path;
    for (const GeoRing& points : lines) {
        for (const ScreenLine& piece : projection.line(points)) append(path, piece);
    }
    painter.strokePath(path, QPen(color(rgba), width, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
}

std::vector<GeoRing> graticule() {
    std::vector<GeoRing> lines;
    for (int lon = -180; lon < 180; lon += kGraticuleStep) {
        GeoRing& meridian = lines.emplace_back();
        for (int lat = -90; lat <= 90; lat += 2) {
            meridian.push_back({static_cast<double>(lat), static_cast<double>(lon)});
        }
    }
    for (int lat = kGraticuleStep - 90; lat < 90; lat += kGraticuleStep) {
        GeoRing& parallel = lines.emplace_back();
        for (int lon = -180; lon <= 180; lon += 2) {
            parallel.push_back({static_cast<double>(lat), static_cast<double>(lon)});
        }
    }
    return lines;
}

void strokeGraticule(QPainter& painter, const MapProjection& projection, QRgb rgba) {
    static const std::vector<GeoRing> lines = graticule();
    strokeLines(painter, projection, lines, rgba, 1);
}

void drawLand(QPainter& painter, const MapProjection& projection, const WorldLevel& world,
              const BaseMapColors& colors) {
    fillLand(painter, projection, world, colors.land);
    strokeGraticule(painter, projection, colors.graticule);
    strokeLines(painter, projection, world.borders, colors.border, 0.8);
    strokeLines(painter, projection, world.coasts, colors.coast, 0.8);
}

void drawFlat(QPainter& painter, const FlatProjection& projection, QSize size,
              const BaseMapColors& colors, double scale) {
    const double top = projection.yOf(90);
    painter.fillRect(QRectF(0, top, size.width(), projection.yOf(-90) - top), color(colors.water));
    const double tolerance = kPixelsOff / (projection.pixelsPerDegree() * scale);
    drawLand(painter, projection, worldMap().level(tolerance), colors);
}

/// A faint rim of air outside the limb.
void drawAir(QPainter& painter, const GlobeProjection& globe, QRgb air) {
    const QPointF middle(globe.middle().x, globe.middle().y);
    const double radius = globe.limbRadius();
    const double outer = radius * (1 + kAirShare);
    QRadialGradient gradient(middle, outer);
    QColor near = color(air);
    near.setAlphaF(0.45F);
    QColor far = near;
    far.setAlpha(0);
    gradient.setColorAt(radius / outer, near);
    gradient.setColorAt(1, far);
    QPainterPath rim;
    rim.addEllipse(middle, outer, outer);
    rim.addEllipse(middle, radius - 1, radius - 1);
    painter.fillPath(rim, gradient);
}

double pixelsPerDegree(const GlobeProjection& globe) {
    return globe.focalLength() / (globe.eyeDistance() - 1) * std::numbers::pi / 180;
}

void drawGlobe(QImage& canvas, const GlobeProjection& globe, const QImage& earth, bool hasLines,
               const BaseMapColors& colors, double scale) {
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    drawAir(painter, globe, colors.air);
    const WorldLevel& world = worldMap().level(kPixelsOff / (pixelsPerDegree(globe) * scale));
    if (earth.isNull()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color(colors.water));
        const QPointF middle(globe.middle().x, globe.middle().y);
        painter.drawEllipse(middle, globe.limbRadius(), globe.limbRadius());
        drawLand(painter, globe, world, colors);
        return;
    }
    paintEarth(canvas, globe, scale, earth);
    if (hasLines) {
        strokeLines(painter, globe, world.borders, kPictureBorder, 0.8);
        strokeLines(painter, globe, world.coasts, kPictureCoast, 0.8);
    }
}

}  // namespace

BaseMapColors baseMapColors() {
    return Theme::isDark() ? kDarkColors : kLightColors;
}

QImage baseMap(MapStyle style, const MapCamera& camera, QSize size, double scale,
               const QImage& earth, const BaseMapColors& colors) {
    QImage canvas((QSizeF(size) * scale).toSize(), QImage::Format_RGB32);
    if (canvas.isNull()) return canvas;
    canvas.setDevicePixelRatio(scale);
    canvas.fill(colors.beyond);
    if (isFlat(style)) {
        QPainter painter(&canvas);
        painter.setRenderHint(QPainter::Antialiasing);
        drawFlat(painter, FlatProjection(camera, size), size, colors, scale);
    } else {
        drawGlobe(canvas, GlobeProjection(camera, size), earth, style == MapStyle::hybrid, colors,
                  scale);
    }
    return canvas;
}

}  // namespace veloran
