#include "orbit/height_estimate.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "orbit/constants.h"
#include "orbit/orbit_bounds.h"
#include "orbit/sgp4.h"

namespace veloran {

namespace {

/// What the interpolation may err by, km: a finer grid costs more places than it spares in those
/// moments that the margin leaves open.
constexpr double interpolationErrorKm = 5e-5;
constexpr double mostErrorKm = 1e-2;
/// Nearer together, more places would be computed than are asked for.
constexpr double leastSpacing = 30.0;
constexpr double mostSpacing = 600.0;
/// Grid before the first moment and after the last, s.
constexpr double beyond = 3.0 * mostSpacing;
/// The largest product of the distances to six places, one apart, for a moment in the middle
/// interval: (1/2 3/2 5/2)^2. Divided by 6! it is what the sixth derivative counts for.
constexpr double middleOfSix = 3.515625 / 720.0;
/// The sidereal angle moves in steps of one part of a Julian date, 40 microseconds; six places
/// with weights of 1.6 together and the one that is estimated are each half a step off.
constexpr double clockError = 60e-6;
constexpr double roundingKm = 5e-6;
/// Within some 0.1 degrees of zenith and nadir the sine of the elevation loses its digits.
constexpr double steepest = 89.9;

/// Lagrange's weights of six places at -2 to 3 for a moment `c` of 0 to 1.
std::array<double, 6> weights(double c) {
    const double a = c + 2, b = c + 1, d = c - 1, e = c - 2, f = c - 3;
    const double ab = a * b, cd = c * d, ef = e * f;
    return {b * cd * ef / -120, a * cd * ef / 24,  ab * d * ef / -12,
            ab * c * ef / 12,   ab * cd * f / -24, ab * cd * e / 120};
}

}  // namespace

HeightEstimate::HeightEstimate(std::shared_ptr<const SatRec> satrec, const GroundObserver& observer,
                               Instant from, Instant to)
    : satrec_(std::move(satrec)), observer_(observer), start_(from - beyond) {
    const OrbitBounds bounds = boundsOf(*satrec_, start_, to + beyond);
    const double radius = WGS84::radiusEarthKm;
    const double sixth = bounds.sixthDerivative * radius;  // km/min^6
    spacing_ = 60.0 * std::pow(interpolationErrorKm / (middleOfSix * sixth), 1.0 / 6.0);
    if (!(spacing_ >= leastSpacing)) spacing_ = NAN;
    spacing_ = std::min(spacing_, mostSpacing);
    errorKm_ = interpolationErrorKm + roundingKm +
               clockError * largestEarthRotation * bounds.largestDistance * radius +
               bounds.kink * radius * spacing_ / 60.0;
    if (!(errorKm_ < mostErrorKm)) spacing_ = NAN;
}

const Vec3& HeightEstimate::placeAt(std::int64_t step) {
    Place& place = places_[static_cast<std::size_t>(step) % places_.size()];
    if (place.step == step) return place.fromHere;
    place.step = step;
    const JulianDate date = jdayFromDate(start_ + spacing_ * static_cast<double>(step));
    const Propagation body = propagatePosition(*satrec_, minutesSinceEpoch(*satrec_, date));
    place.fromHere = body.error == Sgp4Error::none
                         ? observer_.fromHere(body.state.position, gstime(date.jd + date.jdFrac))
                         : Vec3{NAN, NAN, NAN};
    return place.fromHere;
}

std::optional<HeightEstimate::Elevation> HeightEstimate::at(Instant date) {
    const double steps = (date - start_) / spacing_;
    if (!(steps >= 2.0 && steps < 1e12)) return std::nullopt;
    const auto step = static_cast<std::int64_t>(steps);
    const auto weight = weights(steps - static_cast<double>(step));
    Vec3 fromHere;
    for (std::int64_t i = 0; i < 6; ++i) {
        const Vec3& place = placeAt(step - 2 + i);
        const double w = weight[static_cast<std::size_t>(i)];
        fromHere.x += w * place.x;
        fromHere.y += w * place.y;
        fromHere.z += w * place.z;
    }
    const double range =
        std::sqrt(fromHere.x * fromHere.x + fromHere.y * fromHere.y + fromHere.z * fromHere.z);
    const double elevation = std::asin(observer_.heightOver(fromHere) / range) * rad2deg;
    // Also false for what is not a number.
    if (!(range > 1.0 && std::abs(elevation) < steepest)) return std::nullopt;
    constexpr double rounding = 1e-9;
    return Elevation{elevation, 1.01 * errorKm_ / range * rad2deg + rounding};
}

}  // namespace veloran
