#include "ui/map/map_projection.h"

#include <algorithm>
#include <cmath>

#include "ui/map/flat_projection.h"
#include "ui/map/globe_projection.h"

namespace veloran {

namespace {

constexpr double kLeastDegreesAcross = 5;

double wrappedLongitude(double lon) {
    const double wrapped = std::remainder(lon, 360);
    return wrapped == 180 ? -180 : wrapped;
}

double wrappedHeading(double heading) {
    const double wrapped = std::fmod(heading, 360);
    const double positive = wrapped < 0 ? wrapped + 360 : wrapped;
    return positive < 360 ? positive : 0;
}

double finiteOr(double value, double fallback) {
    return std::isfinite(value) ? value : fallback;
}

/// How far from the equator the centre may be, so that nothing beyond a pole shows that need not.
double greatestFlatLatitude(double distance, QSizeF size) {
    const double degreesHigh = size.height() / FlatProjection::pixelsPerDegree(distance, size);
    return std::max(0.0, 90 - degreesHigh / 2);
}

QSizeF atLeastOnePixel(QSizeF size) {
    return size.expandedTo(QSizeF(1, 1));
}

}  // namespace

std::unique_ptr<MapProjection> makeProjection(MapStyle style, const MapCamera& camera,
                                              QSizeF size) {
    if (isFlat(style)) return std::make_unique<FlatProjection>(camera, atLeastOnePixel(size));
    return std::make_unique<GlobeProjection>(camera, atLeastOnePixel(size));
}

double greatestFlatDistance(QSizeF size) {
    const QSizeF view = atLeastOnePixel(size);
    return FlatProjection::kWholeHeightDistance * std::max(1.0, 2 * view.height() / view.width());
}

double smallestDistance(MapStyle style, QSizeF size) {
    const QSizeF view = atLeastOnePixel(size);
    if (isFlat(style)) {
        return FlatProjection::kWholeHeightDistance * (view.height() / 180) * kLeastDegreesAcross /
               view.width();
    }
    return GlobeProjection::distanceForWidth(kLeastDegreesAcross, view);
}

MapCamera clampedCamera(MapStyle style, const MapCamera& camera, QSizeF size) {
    const MapCamera fitted = fittedCamera(style, finiteOr(camera.center.lon, 0));
    const double greatest =
        isFlat(style) ? greatestFlatDistance(size) : GlobeProjection::kGreatestDistance;
    MapCamera result;
    result.distance = std::clamp(finiteOr(camera.distance, fitted.distance),
                                 smallestDistance(style, size), greatest);
    result.center = {finiteOr(camera.center.lat, fitted.center.lat),
                     wrappedLongitude(fitted.center.lon)};
    result.heading = isFlat(style) ? 0 : wrappedHeading(finiteOr(camera.heading, fitted.heading));
    const double limit =
        isFlat(style) ? greatestFlatLatitude(result.distance, atLeastOnePixel(size)) : 90;
    result.center.lat = std::clamp(result.center.lat, -limit, limit);
    return result;
}

}  // namespace veloran
