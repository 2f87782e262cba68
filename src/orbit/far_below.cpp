#include "orbit/far_below.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "orbit/constants.h"
#include "orbit/orbit_bounds.h"
#include "orbit/satellite_sky.h"

namespace veloran {

namespace {

using WGS84::radiusEarthKm;

/// On top of the angle that follows from the bounds.
constexpr double marginDegrees = 0.1;
/// The sine of an elevation rounds to that of the nadir within 1e-7 rad of it, seen from the
/// ground.
constexpr double nadirMargin = 1e-5;

}  // namespace

// From the angle g between vertical and satellite, both from the Earth's centre, and its distance r
// follows up = r cos g - p, and across <= r sin g + d, where p and d are the observer's own. Lower
// than -a means up + across tan a < 0, which holds when cos(g - a) < (p cos a - d sin a) / r. The
// largest distance makes the smallest angle of it unless the observer is below the Earth's centre.
//
// At the nadir up = -rho, so the satellite is as far across as the observer: sin(pi - g) = d / r.
FarBelow::FarBelow(const SatRec& satrec, const GroundObserver& observer, Instant from, Instant to) {
    const OrbitBounds bounds = boundsOf(satrec, from, to);
    const double a = (marginDegrees - Heights::farBelow) * deg2rad;
    const double height = observer.upKm() * std::cos(a) - observer.acrossKm() * std::sin(a);
    nearestAngle_ =
        height < 0.0 ? NAN : a + std::acos(height / (bounds.largestDistance * radiusEarthKm));
    nadirAngle_ = std::numbers::pi - std::asin(observer.acrossKm() / radiusEarthKm) - nadirMargin;
    angularSpeed_ = bounds.angularSpeed / 60.0 + largestEarthRotation;
}

Instant FarBelow::sureUntil(Instant at, double upKm, double distanceKm) const {
    const double angle = std::acos(upKm / distanceKm);
    const double seconds = std::min(angle - nearestAngle_, nadirAngle_ - angle) / angularSpeed_;
    return seconds > 0.0 ? at + seconds : at;
}

}  // namespace veloran
