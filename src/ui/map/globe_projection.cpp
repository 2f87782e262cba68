#include "ui/map/globe_projection.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "ui/map/limb_clip.h"

namespace veloran {

namespace {

constexpr double kRadians = std::numbers::pi / 180;

/// From this height the globe takes this share of the smaller side of the view.
constexpr double kWholeDiscDistance = 3e7;
constexpr double kWholeDiscShare = 0.8;

constexpr double kLeastDistance = 1000;  // metres; nearer, the disc's numbers grow beyond use

/// Tangent of the angle at the eye between the middle of the disc and its limb.
double limbTangent(double eyeDistance) {
    return 1 / std::sqrt(eyeDistance * eyeDistance - 1);
}

double focalLengthFor(QSizeF size) {
    const double radius = kWholeDiscShare / 2 * std::min(size.width(), size.height());
    return radius / limbTangent(1 + kWholeDiscDistance / GlobeProjection::kRadiusMetres);
}

Vec3 sum(double a, const Vec3& u, double b, const Vec3& v) {
    return {a * u.x + b * v.x, a * u.y + b * v.y, a * u.z + b * v.z};
}

GlobeProjection::Frame frameOf(const MapCamera& camera) {
    const double lat = camera.center.lat * kRadians;
    const double lon = camera.center.lon * kRadians;
    const double heading = camera.heading * kRadians;
    const Vec3 east = {-std::sin(lon), std::cos(lon), 0};
    const Vec3 north = {-std::sin(lat) * std::cos(lon), -std::sin(lat) * std::sin(lon),
                        std::cos(lat)};
    return {sum(std::cos(heading), east, -std::sin(heading), north),
            sum(std::sin(heading), east, std::cos(heading), north), unitVector(camera.center)};
}

}  // namespace

GlobeProjection::GlobeProjection(const MapCamera& camera, QSizeF size)
    : middle_{size.width() / 2, size.height() / 2},
      frame_(frameOf(camera)),
      eyeDistance_(1 + std::max(camera.distance, kLeastDistance) / kRadiusMetres),
      focalLength_(focalLengthFor(size)) {}

double GlobeProjection::limbRadius() const {
    return focalLength_ * limbTangent(eyeDistance_);
}

double GlobeProjection::pixelsPerDegree() const {
    return focalLength_ / (eyeDistance_ - 1) * kRadians;
}

SphereCap GlobeProjection::sight() const {
    const auto corner = toGeo({0, 0});  // as far from the middle as any point of the view
    return {frame_.toEye, corner ? std::acos(std::min(dot(unitVector(*corner), frame_.toEye), 1.0))
                                 : std::acos(limb())};
}

double GlobeProjection::distanceForWidth(double degrees, QSizeF size) {
    const double half = degrees / 2 * kRadians;
    const double eye = std::cos(half) + focalLengthFor(size) * std::sin(half) * 2 / size.width();
    return std::max((eye - 1) * kRadiusMetres, kLeastDistance);
}

Vec3 GlobeProjection::inFrame(GeoPoint point) const {
    const Vec3 v = unitVector(point);
    return {dot(v, frame_.right), dot(v, frame_.up), dot(v, frame_.toEye)};
}

SphereLine GlobeProjection::inFrame(const GeoRing& points) const {
    SphereLine result;
    result.reserve(points.size());
    for (const GeoPoint& point : points) result.push_back(inFrame(point));
    return result;
}

scene::Point GlobeProjection::place(const Vec3& point) const {
    const double scale = focalLength_ / (eyeDistance_ - point.z);
    return {middle_.x + scale * point.x, middle_.y - scale * point.y};
}

std::vector<ScreenLine> GlobeProjection::place(const std::vector<SphereLine>& shapes) const {
    std::vector<ScreenLine> result;
    for (const SphereLine& shape : shapes) {
        ScreenLine& placed = result.emplace_back();
        placed.reserve(shape.size());
        for (const Vec3& point : shape) placed.push_back(place(point));
    }
    return result;
}

std::vector<scene::Point> GlobeProjection::toScreen(GeoPoint point) const {
    const Vec3 seen = inFrame(point);
    if (seen.z < limb()) return {};
    return {place(seen)};
}

std::optional<GeoPoint> GlobeProjection::toGeo(scene::Point point) const {
    const double x = (point.x - middle_.x) / focalLength_;
    const double y = (middle_.y - point.y) / focalLength_;
    // The ray from the eye, (x t, y t, eye - t), meets the sphere first at the smaller t.
    const double squared = 1 + x * x + y * y;
    const double root = eyeDistance_ * eyeDistance_ - squared * (eyeDistance_ * eyeDistance_ - 1);
    if (!(root >= 0)) return std::nullopt;
    const double t = (eyeDistance_ - std::sqrt(root)) / squared;
    const Vec3 across = sum(x * t, frame_.right, y * t, frame_.up);
    GeoPoint ground = geoPoint(sum(1, across, eyeDistance_ - t, frame_.toEye));
    if (ground.lon == 180) ground.lon = -180;
    return ground;
}

std::vector<ScreenLine> GlobeProjection::line(const GeoRing& points) const {
    return place(visibleLine(inFrame(points), limb()));
}

std::vector<ScreenLine> GlobeProjection::area(const GeoRing& ring) const {
    return place(visibleArea(inFrame(ring), limb()));
}

std::vector<ScreenLine> GlobeProjection::region(const GroundRegion& region) const {
    std::vector<SphereLine> rings;
    for (const GeoRing& ring : region.rings) rings.push_back(inFrame(ring));
    return place(visibleRegion(rings, limb(), region.holdsNorthPole));
}

}  // namespace veloran
