#include "ui/scene/scene_painter.h"

#include <QPainterPath>

#include "ui/theme.h"

namespace veloran {

void ScenePainter::draw(const scene::Scene& scene) {
    painter_.save();
    painter_.setRenderHint(QPainter::Antialiasing);
    for (const scene::Shape& shape : scene) {
        std::visit([this](const auto& s) { (*this)(s); }, shape);
    }
    painter_.restore();
}

void ScenePainter::operator()(const scene::Disc& disc) {
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(Theme::color(disc.fill.ink, disc.fill.opacity));
    painter_.drawEllipse(QPointF(disc.center.x, disc.center.y), disc.radius, disc.radius);
}

void ScenePainter::operator()(const scene::Ring& ring) {
    use(ring.stroke);
    painter_.drawEllipse(QPointF(ring.center.x, ring.center.y), ring.radius, ring.radius);
}

void ScenePainter::operator()(const scene::Line& line) {
    use(line.stroke);
    painter_.drawLine(QPointF(line.from.x, line.from.y), QPointF(line.to.x, line.to.y));
}

void ScenePainter::operator()(const scene::Polyline& polyline) {
    use(polyline.stroke);
    QPolygonF points;
    points.reserve(static_cast<qsizetype>(polyline.points.size()));
    for (const scene::Point& p : polyline.points) points.append(QPointF(p.x, p.y));
    painter_.drawPolyline(points);
}

void ScenePainter::use(const scene::Stroke& stroke) {
    QPen pen(Theme::color(stroke.ink, stroke.opacity), stroke.width);
    pen.setJoinStyle(Qt::RoundJoin);
    painter_.setPen(pen);
    painter_.setBrush(Qt::NoBrush);
}

}  // namespace veloran
