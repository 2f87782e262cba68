#include "ui/map/map_gestures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "orbit/angles.h"
#include "orbit/constants.h"
#include "ui/map/flat_projection.h"
#include "ui/map/globe_projection.h"
#include "ui/map/map_projection.h"

namespace veloran {

namespace {

using scene::Point;

Point middleOf(QSizeF size) {
    return {size.width() / 2, size.height() / 2};
}

Point between(const Point& from, const Point& to, double share) {
    return {from.x + share * (to.x - from.x), from.y + share * (to.y - from.y)};
}

/// A direction from the centre of the Earth as the globe shows it with north up: x to the right,
/// y up, z towards the eye.
using View = std::array<double, 3>;

View viewOf(const GeoPoint& ground, const GeoPoint& center) {
    const double lat = ground.lat * deg2rad;
    const double lat0 = center.lat * deg2rad;
    const double dLon = (ground.lon - center.lon) * deg2rad;
    return {std::cos(lat) * std::sin(dLon),
            std::cos(lat0) * std::sin(lat) - std::sin(lat0) * std::cos(lat) * std::cos(dLon),
            std::sin(lat0) * std::sin(lat) + std::cos(lat0) * std::cos(lat) * std::cos(dLon)};
}

/// The centre for which `ground` shows at `view`, of two the one nearer to `now`. With a the
/// latitude in the plane of the view's meridian and a0 that of the centre,
/// (z, y) stands at the angle a - a0. What no tilt can bring there comes as near as it goes.
GeoPoint centerShowing(const GeoPoint& ground, const View& view, const GeoPoint& now) {
    const double lat = ground.lat * deg2rad;
    const double sine = std::clamp(view[0] / std::max(std::cos(lat), 1e-9), -1.0, 1.0);
    const auto solution = [&](double dLon) {
        const double inPlane = std::atan2(std::sin(lat), std::cos(lat) * std::cos(dLon));
        const double lat0 = withinHalfTurn((inPlane - std::atan2(view[1], view[2])) * rad2deg, 360);
        return GeoPoint{lat0, withinHalfTurn(ground.lon - dLon * rad2deg, 360)};
    };
    const auto distance = [&](const GeoPoint& center) {
        const double beyond = std::max(std::abs(center.lat) - 90, 0.0);
        return beyond + std::abs(center.lat - now.lat) +
               std::abs(withinHalfTurn(center.lon - now.lon, 360)) * std::cos(now.lat * deg2rad);
    };
    const double dLon = std::asin(sine);
    const std::array solutions = {solution(dLon), solution(std::numbers::pi - dLon)};
    GeoPoint best = *std::ranges::min_element(solutions, {}, distance);
    best.lat = std::clamp(best.lat, -90.0, 90.0);
    return best;
}

/// The ground at a point, or at the globe's limb on the way there from the middle.
GeoPoint nearestGround(const MapProjection& globe, const MapCamera& camera, QSizeF size,
                       const Point& at) {
    if (const auto ground = globe.toGeo(at)) return *ground;
    constexpr int kHalvings = 24;
    double inside = 0;
    double outside = 1;
    GeoPoint ground = camera.center;
    for (int i = 0; i < kHalvings; ++i) {
        const double share = (inside + outside) / 2;
        if (const auto found = globe.toGeo(between(middleOf(size), at, share))) {
            ground = *found;
            inside = share;
        } else {
            outside = share;
        }
    }
    return ground;
}

MapCamera turnedGlobe(MapStyle style, const MapCamera& camera, QSizeF size, const GeoPoint& ground,
                      const Point& to) {
    const auto globe = makeProjection(style, camera, size);
    const View view = viewOf(nearestGround(*globe, camera, size, to), camera.center);
    MapCamera turned = camera;
    turned.center = centerShowing(ground, view, camera.center);
    return turned;
}

double flatScale(const MapCamera& camera, QSizeF size) {
    return FlatProjection::pixelsPerDegree(camera.distance, size.expandedTo(QSizeF(1, 1)));
}

MapCamera movedFlat(const MapCamera& camera, double scale, double right, double down) {
    MapCamera moved = camera;
    moved.center.lat += down / scale;
    moved.center.lon = withinHalfTurn(moved.center.lon - right / scale, 360);
    return moved;
}

/// Degrees of the ground that a share of the view is wide, in the middle of the globe.
double groundStep(const MapCamera& camera, QSizeF size, double pixels) {
    constexpr double kMost = 20;  // from far away: more would be lost from sight
    return std::clamp(pixels / GlobeProjection(camera, size).pixelsPerDegree(), -kMost, kMost);
}

}  // namespace

MapCamera pannedCamera(MapStyle style, const MapCamera& camera, QSizeF size, Point from, Point to) {
    if (isFlat(style)) {
        const double scale = flatScale(camera, size);
        return clampedCamera(style, movedFlat(camera, scale, to.x - from.x, to.y - from.y), size);
    }
    const auto globe = makeProjection(style, camera, size);
    const GeoPoint ground = nearestGround(*globe, camera, size, from);
    return clampedCamera(style, turnedGlobe(style, camera, size, ground, to), size);
}

MapCamera steppedCamera(MapStyle style, const MapCamera& camera, QSizeF size, double right,
                        double down) {
    const Point middle = middleOf(size);
    if (isFlat(style)) {
        return pannedCamera(style, camera, size,
                            {middle.x + right * size.width(), middle.y + down * size.height()},
                            middle);
    }
    const QSizeF view = size.expandedTo(QSizeF(1, 1));
    const double aside = groundStep(camera, view, right * view.width());
    const double up = groundStep(camera, view, -down * view.height());
    // The heading, in quarter turns, says what of the Earth is up.
    const int quarters = static_cast<int>(std::lround(withinHalfTurn(camera.heading, 360) / 90));
    const double turns[] = {1, 0, -1, 0};  // cosines of the quarters
    const double cosine = turns[(quarters + 4) % 4];
    const double sine = turns[(quarters + 3) % 4];
    const double east = aside * cosine + up * sine;
    const double north = up * cosine - aside * sine;
    // As far on the ground at each latitude, but for the poles.
    constexpr double kNarrowest = 0.2;
    MapCamera moved = camera;
    moved.center.lon += east / std::max(std::cos(camera.center.lat * deg2rad), kNarrowest);
    moved.center.lat += north;
    return clampedCamera(style, moved, size);
}

MapCamera zoomedAbout(MapStyle style, const MapCamera& camera, QSizeF size, Point pointer,
                      double factor) {
    if (!(factor > 0) || !std::isfinite(factor)) return camera;
    MapCamera nearer = camera;
    nearer.distance /= factor;
    nearer = clampedCamera(style, nearer, size);
    if (isFlat(style)) {
        const Point middle = middleOf(size);
        const double before = flatScale(camera, size);
        const double after = flatScale(nearer, size);
        // The pointer's distance from the middle, in degrees before less that after.
        const double moved = 1 - after / before;
        nearer.center = camera.center;
        return clampedCamera(style,
                             movedFlat(nearer, after, (pointer.x - middle.x) * moved,
                                       (pointer.y - middle.y) * moved),
                             size);
    }
    const auto ground = makeProjection(style, camera, size)->toGeo(pointer);
    if (!ground || !makeProjection(style, nearer, size)->toGeo(pointer)) return nearer;
    return clampedCamera(style, turnedGlobe(style, nearer, size, *ground, pointer), size);
}

MapCamera rotated(MapStyle style, const MapCamera& camera, QSizeF size, double clockwiseDegrees) {
    if (isFlat(style) || !std::isfinite(clockwiseDegrees)) return camera;
    MapCamera turned = camera;
    turned.heading = withinHalfTurn(camera.heading - clockwiseDegrees, 360);
    return clampedCamera(style, turned, size);
}

double turnAboutMiddle(QSizeF size, Point from, Point to) {
    const Point middle = middleOf(size);
    const auto angle = [&middle](const Point& point) {
        return std::atan2(point.y - middle.y, point.x - middle.x) * rad2deg;  // y is down
    };
    return withinHalfTurn(angle(to) - angle(from), 360);
}

double wheelZoomFactor(QPoint pixelDelta, QPoint angleDelta) {
    constexpr double kPixelsForTwice = 150;
    constexpr double kNotchesForTwice = 3;
    constexpr double kUnitsPerNotch = 120;
    const double twices = pixelDelta.y() != 0
                              ? pixelDelta.y() / kPixelsForTwice
                              : angleDelta.y() / (kUnitsPerNotch * kNotchesForTwice);
    return std::exp2(std::clamp(twices, -3.0, 3.0));
}

}  // namespace veloran
