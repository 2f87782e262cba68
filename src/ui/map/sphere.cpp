#include "ui/map/sphere.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace veloran {

namespace {

constexpr double kRadians = std::numbers::pi / 180;

template <typename Edge>
double sumOfEdges(const SphereLine& ring, Edge edge) {
    double sum = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        sum += edge(ring[i], ring[i + 1 < ring.size() ? i + 1 : 0]);
    }
    return sum;
}

}  // namespace

Vec3 unitVector(GeoPoint point) {
    const double lat = point.lat * kRadians;
    const double lon = point.lon * kRadians;
    return {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat)};
}

SphereLine unitVectors(const GeoRing& points) {
    SphereLine result;
    result.reserve(points.size());
    for (const GeoPoint& point : points) result.push_back(unitVector(point));
    return result;
}

GeoPoint geoPoint(const Vec3& direction) {
    return {std::atan2(direction.z, std::hypot(direction.x, direction.y)) / kRadians,
            std::atan2(direction.y, direction.x) / kRadians};
}

SphereCap capAround(const SphereLine& points) {
    Vec3 sum;
    for (const Vec3& point : points) sum = {sum.x + point.x, sum.y + point.y, sum.z + point.z};
    const double length = std::sqrt(dot(sum, sum));
    if (!(length > 0)) return {{0, 0, 1}, std::numbers::pi};
    const Vec3 middle = {sum.x / length, sum.y / length, sum.z / length};
    double nearest = 1;
    for (const Vec3& point : points) nearest = std::min(nearest, dot(point, middle));
    return {middle, std::acos(std::max(nearest, -1.0))};
}

bool doMeet(const SphereCap& a, const SphereCap& b) {
    const double reach = a.radius + b.radius;
    return reach >= std::numbers::pi || dot(a.middle, b.middle) >= std::cos(reach);
}

double areaAboutAxis(const SphereLine& ring) {
    return sumOfEdges(ring, [](const Vec3& a, const Vec3& b) {
        return 2 * std::atan2(a.x * b.y - a.y * b.x, 1 + a.z + b.z + dot(a, b));
    });
}

bool isLeftSideSmaller(const SphereLine& ring) {
    constexpr double kWhole = 4 * std::numbers::pi;
    const double area = areaAboutAxis(ring);
    return area - kWhole * std::floor(area / kWhole) <= kWhole / 2;
}

int turnsAboutAxis(const SphereLine& ring) {
    const double angle = sumOfEdges(ring, [](const Vec3& a, const Vec3& b) {
        return std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y);
    });
    return static_cast<int>(std::lround(angle / (2 * std::numbers::pi)));
}

}  // namespace veloran
