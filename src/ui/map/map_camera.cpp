#include "ui/map/map_camera.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "orbit/angles.h"

namespace veloran {

namespace {

struct StyleTexts {
    std::string_view name;
    std::string_view label;
};

const StyleTexts& textsOf(MapStyle style) {
    static constexpr std::array<StyleTexts, std::size(kMapStyles)> texts = {
        {{"standard", "Map"}, {"imagery", "Satellite"}, {"hybrid", "Hybrid"}}};
    return texts[static_cast<std::size_t>(style)];
}

/// Slow at both ends: 3 s^2 - 2 s^3.
double easedShare(double share) {
    return share * share * (3 - 2 * share);
}

double between(double from, double to, double share) {
    return from + share * (to - from);
}

/// Degrees, the short way round.
double turnedBetween(double from, double to, double share) {
    return withinHalfTurn(from + share * withinHalfTurn(to - from, 360), 360);
}

}  // namespace

std::string_view mapStyleName(MapStyle style) {
    return textsOf(style).name;
}

std::string_view mapStyleLabel(MapStyle style) {
    return textsOf(style).label;
}

MapStyle mapStyleNamed(std::string_view name) {
    const auto found = std::ranges::find(kMapStyles, name, mapStyleName);
    return found == std::end(kMapStyles) ? kMapStyles[0] : *found;
}

MapCamera fittedCamera(MapStyle style, double observerLongitude) {
    const double longitude =
        std::isfinite(observerLongitude) ? withinHalfTurn(observerLongitude, 360) : 0;
    if (isFlat(style)) return {.center = {0, longitude}, .distance = 50'000'000};
    return {.center = {20, longitude}, .distance = 30'000'000};
}

MapCamera easedCamera(const MapCamera& from, const MapCamera& to, double share) {
    if (!(share > 0)) return from;
    if (share >= 1) return to;
    const double s = easedShare(share);
    return {.center = {between(from.center.lat, to.center.lat, s),
                       turnedBetween(from.center.lon, to.center.lon, s)},
            // Equal factors in equal times look like an even flight.
            .distance = std::exp(between(std::log(from.distance), std::log(to.distance), s)),
            .heading = turnedBetween(from.heading, to.heading, s)};
}

}  // namespace veloran
