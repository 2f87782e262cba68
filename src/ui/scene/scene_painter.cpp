#include "ui/scene/scene_painter.h"

#include <QFontMetricsF>
#include <QPainterPath>
#include <cmath>

#include "ui/q_text.h"
#include "ui/theme.h"

namespace veloran {

namespace {

/// Where a coordinate is no number, Qt computes for seconds. A direction right at the zenith may be
/// none.
bool isPlace(const scene::Point& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

QPolygonF polygon(const std::vector<scene::Point>& points) {
    QPolygonF result;
    result.reserve(static_cast<qsizetype>(points.size()));
    for (const scene::Point& p : points) {
        if (isPlace(p)) result.append(QPointF(p.x, p.y));
    }
    return result;
}

double leftEdge(double x, double width, scene::Anchor anchor) {
    switch (anchor) {
        case scene::Anchor::leading:
            return x;
        case scene::Anchor::center:
            return x - width / 2;
        case scene::Anchor::trailing:
            return x - width;
    }
    return x;
}

}  // namespace

void ScenePainter::draw(const scene::Scene& scene) {
    painter_.save();
    painter_.setRenderHint(QPainter::Antialiasing);
    for (const scene::Shape& shape : scene) {
        std::visit([this](const auto& s) { (*this)(s); }, shape);
    }
    painter_.restore();
}

void ScenePainter::operator()(const scene::Disc& disc) {
    if (!isPlace(disc.center)) return;
    use(disc.fill);
    painter_.drawEllipse(QPointF(disc.center.x, disc.center.y), disc.radius, disc.radius);
}

void ScenePainter::operator()(const scene::Ring& ring) {
    if (!isPlace(ring.center)) return;
    use(ring.stroke);
    painter_.drawEllipse(QPointF(ring.center.x, ring.center.y), ring.radius, ring.radius);
}

void ScenePainter::operator()(const scene::Line& line) {
    if (!isPlace(line.from) || !isPlace(line.to)) return;
    use(line.stroke);
    painter_.drawLine(QPointF(line.from.x, line.from.y), QPointF(line.to.x, line.to.y));
}

void ScenePainter::operator()(const scene::Polyline& polyline) {
    use(polyline.stroke);
    const QPolygonF points = polygon(polyline.points);
    if (points.size() > 3 && points.isClosed()) {
        painter_.drawPolygon(points);  // joins its ends
    } else {
        painter_.drawPolyline(points);
    }
}

void ScenePainter::operator()(const scene::Polygon& shape) {
    use(shape.fill);
    painter_.drawPolygon(polygon(shape.points), Qt::WindingFill);
}

void ScenePainter::operator()(const scene::Region& region) {
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    for (const auto& ring : region.rings) {
        path.addPolygon(polygon(ring));
        path.closeSubpath();
    }
    use(region.fill);
    painter_.drawPath(path);
}

void ScenePainter::operator()(const scene::Text& text) {
    if (!isPlace(text.at)) return;
    const QFont font =
        text.mono ? Theme::mono(text.pixels, text.weight) : Theme::face(text.pixels, text.weight);
    const QFontMetricsF metrics(font);
    const QString words = qText(text.text);
    painter_.setFont(font);
    painter_.setPen(Theme::text(text.fill, Theme::color(ground_)));
    painter_.drawText(QPointF(leftEdge(text.at.x, metrics.horizontalAdvance(words), text.anchor),
                              text.at.y + (metrics.ascent() - metrics.descent()) / 2),
                      words);
}

void ScenePainter::operator()(const scene::Tag& tag) {
    if (!isPlace(tag.center)) return;
    const QFont font = Theme::face(tag.pixels, tag.weight);
    const QFontMetricsF metrics(font);
    const QString words = qText(tag.text);
    const double width = metrics.horizontalAdvance(words) + 2 * tag.horizontalPadding;
    const double height = metrics.height() + 2 * tag.verticalPadding;
    const QRectF plate(tag.center.x - width / 2, tag.center.y - height / 2, width, height);
    use(scene::Fill{Ink::window, 0.85});
    painter_.drawRoundedRect(plate, tag.cornerRadius, tag.cornerRadius);
    painter_.setFont(font);
    painter_.setPen(Theme::text(Ink::primary));
    painter_.drawText(plate, Qt::AlignCenter, words);
}

void ScenePainter::operator()(const scene::Icon& icon) {
    if (!isPlace(icon.center)) return;
    const QRectF area(icon.center.x - icon.size / 2, icon.center.y - icon.size / 2, icon.size,
                      icon.size);
    paintSymbol(painter_, area, icon.symbol, Theme::color(icon.paint));
}

void ScenePainter::use(const scene::Stroke& stroke) {
    QPen pen(Theme::color(stroke.paint, stroke.opacity), stroke.width, Qt::SolidLine, Qt::FlatCap,
             Qt::RoundJoin);
    if (stroke.dash > 0) {
        pen.setDashPattern({stroke.dash / stroke.width, stroke.gap / stroke.width});
    }
    painter_.setPen(pen);
    painter_.setBrush(Qt::NoBrush);
}

void ScenePainter::use(const scene::Fill& fill) {
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(Theme::color(fill));
}

}  // namespace veloran
