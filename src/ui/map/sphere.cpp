#include "ui/map/sphere.h"

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
