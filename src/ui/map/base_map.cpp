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
constexpr float kAirOpacity = 0.45F;

constexpr BaseMapColors kDarkColors = {.beyond = 0xff101216,
                                       .water = 0xff19222e,
                                       .land = 0xff36414d,
                                       .coast = 0xff66788b,
                                       .border = 0xff515f6e,
                                       .graticule = 0x16c8dcf0,
                                       .air = 0xff7fb4e6};
// Not so pale that white and amber lines over it could not be seen.
constexpr BaseMapColors kLightColors = {.beyond = 0xffe4e7eb,
                                        .water = 0xffa3bfd4,
                                        .land = 0xffd9d7cd,
                                        .coast = 0xff7f98ac,
                                        .border = 0xffb2b5ab,
                                        .graticule = 0x30ffffff,
                                        .air = 0xff6fa3d6};

// Over a picture of the Earth, whose own colours do not follow the theme.
constexpr QRgb kPictureCoast = 0xa0ffffff;
constexpr QRgb kPictureBorder = 0x70ffffff;

/// As fine as the picture has pixels: Qt draws such lines many times faster than wider ones.
double lineWidth(double scale) {
    return std::min(0.8, 1 / scale);
}

QColor color(QRgb rgba) {
    return QColor::fromRgba(rgba);
}

QPolygonF polygon(const ScreenLine& line) {
    QPolygonF result;
    result.reserve(static_cast<qsizetype>(line.size()));
    for (const scene::Point& point : line) result.append({point.x, point.y});
    return result;
}

/// One canvas and what it shows of the world.
struct Sheet {
    QPainter& painter;
    const MapProjection& projection;
    SphereCap sight;
    double scale;
};

void fillLand(const Sheet& sheet, const std::vector<WorldLine>& land, QRgb rgba) {
    QPainterPath path;  // odd and even: a ring inside another is a lake
    for (const WorldLine& ring : land) {
        if (!doMeet(ring.cap, sheet.sight)) continue;
        for (const ScreenLine& part : sheet.projection.area(ring.points)) {
            path.addPolygon(polygon(part));
            path.closeSubpath();
        }
    }
    sheet.painter.fillPath(path, color(rgba));
}

void strokeLines(const Sheet& sheet, const std::vector<WorldLine>& lines, QRgb rgba) {
    sheet.painter.setPen(
        QPen(color(rgba), lineWidth(sheet.scale), Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
    sheet.painter.setBrush(Qt::NoBrush);
    for (const WorldLine& line : lines) {
        if (!doMeet(line.cap, sheet.sight)) continue;
        for (const ScreenLine& piece : sheet.projection.line(line.points)) {
            sheet.painter.drawPolyline(polygon(piece));
        }
    }
}

/// Every 30 degrees, in steps that follow the parallels on the globe.
std::vector<WorldLine> graticule() {
    std::vector<WorldLine> lines;
    for (int lon = -180; lon < 180; lon += kGraticuleStep) {
        GeoRing& meridian = lines.emplace_back().points;
        for (int lat = -90; lat <= 90; lat += 2) {
            meridian.push_back({static_cast<double>(lat), static_cast<double>(lon)});
        }
    }
    for (int lat = kGraticuleStep - 90; lat < 90; lat += kGraticuleStep) {
        GeoRing& parallel = lines.emplace_back().points;
        for (int lon = -180; lon <= 180; lon += 2) {
            parallel.push_back({static_cast<double>(lat), static_cast<double>(lon)});
        }
    }
    for (WorldLine& line : lines) line.cap = capAround(unitVectors(line.points));
    return lines;
}

void drawLand(const Sheet& sheet, const WorldLevel& world, const BaseMapColors& colors) {
    static const std::vector<WorldLine> lines = graticule();
    fillLand(sheet, world.land, colors.land);
    strokeLines(sheet, lines, colors.graticule);
    strokeLines(sheet, world.borders, colors.border);
    strokeLines(sheet, world.coasts, colors.coast);
}

/// `pixelsPerDegree` is logical.
const WorldLevel& worldLevel(double pixelsPerDegree, double scale) {
    return worldMap().level(kPixelsOff / (pixelsPerDegree * scale));
}

void drawFlat(QImage& canvas, const FlatProjection& flat, double scale,
              const BaseMapColors& colors) {
    QPainter painter(&canvas);
    const double top = flat.yOf(90);
    painter.fillRect(QRectF(0, top, canvas.width() / scale, flat.yOf(-90) - top),
                     color(colors.water));
    painter.setRenderHint(QPainter::Antialiasing);
    const SphereCap everything = {{0, 0, 1}, std::numbers::pi};
    drawLand({painter, flat, everything, scale}, worldLevel(flat.pixelsPerDegree(), scale), colors);
}

void fillWater(QPainter& painter, const GlobeProjection& globe, QRgb water) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color(water));
    painter.drawEllipse(QPointF(globe.middle().x, globe.middle().y), globe.limbRadius(),
                        globe.limbRadius());
}

/// A faint rim of air outside the limb.
void drawAir(QPainter& painter, const GlobeProjection& globe, QRgb air) {
    const QPointF middle(globe.middle().x, globe.middle().y);
    const double radius = globe.limbRadius();
    const double outer = radius * (1 + kAirShare);
    QRadialGradient gradient(middle, outer);
    QColor near = color(air);
    near.setAlphaF(kAirOpacity);
    QColor far = near;
    far.setAlpha(0);
    gradient.setColorAt(radius / outer, near);
    gradient.setColorAt(1, far);
    QPainterPath rim;
    rim.addEllipse(middle, outer, outer);
    rim.addEllipse(middle, radius - 1, radius - 1);
    painter.fillPath(rim, gradient);
}

void drawGlobe(QImage& canvas, const GlobeProjection& globe, double scale, const QImage& earth,
               bool hasLines, const BaseMapColors& colors) {
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    drawAir(painter, globe, colors.air);
    const Sheet sheet{painter, globe, globe.sight(), scale};
    const WorldLevel& world = worldLevel(globe.pixelsPerDegree(), scale);
    if (earth.isNull()) {
        fillWater(painter, globe, colors.water);
        drawLand(sheet, world, colors);
        return;
    }
    paintEarth(canvas, globe, scale, earth);
    if (!hasLines) return;
    strokeLines(sheet, world.borders, kPictureBorder);
    strokeLines(sheet, world.coasts, kPictureCoast);
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
        drawFlat(canvas, FlatProjection(camera, size), scale, colors);
    } else {
        drawGlobe(canvas, GlobeProjection(camera, size), scale, earth, style == MapStyle::hybrid,
                  colors);
    }
    return canvas;
}

}  // namespace veloran
