#include "orbit/far_below.h"

#include <cmath>

#include "orbit/constants.h"
#include "orbit/orbit_bounds.h"

namespace veloran {

namespace {

/// On top of the angle that follows from the bounds.
constexpr double marginDegrees = 0.1;

}  // namespace

// From the angle g between vertical and satellite, both from the Earth's centre, and its distance r
// follows up = r cos g - p, and across <= r sin g + d, where p and d are the observer's own. Lower
// than -a means up + across tan a < 0, which holds when cos(g - a) < (p cos a - d sin a) / r.
FarBelow::FarBelow(const SatRec& satrec, const GroundObserver& observer, Instant from, Instant to) {
    const OrbitBounds bounds = boundsOf(satrec, from, to);
    const double a = (marginDegrees - elevation) * deg2rad;
    nearestAngle_ =
        a + std::acos((observer.upKm() * std::cos(a) - observer.acrossKm() * std::sin(a)) /
                      (bounds.largestDistance * WGS84::radiusEarthKm));
    angularSpeed_ = bounds.angularSpeed / 60.0 + largestEarthRotation;
}

Instant FarBelow::sureUntil(Instant at, double upKm, double distanceKm) const {
    const double seconds = (std::acos(upKm / distanceKm) - nearestAngle_) / angularSpeed_;
    return seconds > 0.0 ? at + seconds : at;
}

}  // namespace veloran
