#include "orbit/far_below.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "orbit/constants.h"

namespace veloran {

namespace {

using namespace WGS84;

/// Above this eccentricity ten steps may not solve Kepler's equation, and with more drag than this
/// the orbit of the epoch says little about the span. Such sets are searched sample by sample.
constexpr double largestEccentricity = 0.75;
constexpr double largestShrinking = 0.02;
/// On top of every bound below, which leave out terms of the order of j2 squared.
constexpr double speedMargin = 1.05;
constexpr double marginDegrees = 0.1;
/// Rotation of the Earth against the stars, rad/s, rounded up.
constexpr double earthRotation = 7.3e-5;

/// What the propagator can give within `t` minutes of the epoch.
struct OrbitBounds {
    double largestDistance;  // Earth radii
    double angularSpeed;     // rad/min, of the direction from the Earth's centre
};

bool hasLinearRates(const SatRec& s) {
    return s.dedt != 0 || s.didt != 0 || s.dmdt != 0 || s.dnodt != 0 || s.domdt != 0;
}

/// NaN in both where the orbit is none of those that this knows. The names are those of the
/// propagation, whose terms are bounded one after the other by the largest value of each.
OrbitBounds boundsOf(const SatRec& s, double t) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr OrbitBounds unknown{nan, nan};
    const double shrinking =
        t * (std::abs(s.cc1) + t * (std::abs(s.d2) + t * (std::abs(s.d3) + t * std::abs(s.d4))));
    const double smallestAxis = s.ao * (1 - shrinking) * (1 - shrinking);
    const double largestAxis = s.ao * (1 + shrinking) * (1 + shrinking);
    const double eccentricity =
        std::max(s.ecco, 1e-3) + std::abs(s.bstar) * (std::abs(s.cc4) * t + 2 * std::abs(s.cc5));
    const double longPeriod =
        std::max(std::abs(s.aycof), std::abs(s.xlcof)) / (smallestAxis * (1 - eccentricity));
    const double e = eccentricity + longPeriod;  // of (axnl, aynl)
    if (!(shrinking <= largestShrinking && e <= largestEccentricity) || hasLinearRates(s)) {
        return unknown;
    }

    const double pl = smallestAxis * (1 - e * e);
    const double temp1 = 0.5 * j2 / pl;
    const double temp2 = temp1 / pl;
    // The longitude in the orbit by mean motion, perigee and drag; what else moves the perigee, the
    // eccentricity and the long-period terms counts thrice, for the true anomaly follows them more
    // than the mean one.
    const double drag =
        s.no_unkozai * t *
        (2 * std::abs(s.t2cof) +
         t * (3 * std::abs(s.t3cof) + t * (4 * std::abs(s.t4cof) + t * 5 * std::abs(s.t5cof))));
    const double meanRate = std::abs(s.mdot) + std::abs(s.argpdot) + drag;
    const double eta = 1 + std::abs(s.eta);
    const double perigeeRate = std::abs(s.argpdot) + std::abs(s.omgcof) +
                               std::abs(s.xmcof) * 3 * eta * eta * std::abs(s.eta * s.mdot);
    const double eccentricityRate =
        std::abs(s.bstar) * (std::abs(s.cc4) + std::abs(s.cc5) * 2 * meanRate);
    const double longitudeRate =
        meanRate + 3 * (perigeeRate + eccentricityRate + longPeriod * perigeeRate);
    // dv/dM is largest in the perigee.
    const double argumentRate = longitudeRate * std::sqrt((1 + e) / ((1 - e) * (1 - e) * (1 - e)));
    const double nodeRate = std::abs(s.nodedot) + 2 * std::abs(s.nodecf) * t;
    return {largestAxis * (1 + e) * (1 + 3 * temp2) + temp1,
            speedMargin * (argumentRate * (1 + 8 * temp2) + nodeRate)};
}

}  // namespace

// From the angle g between vertical and satellite, both from the Earth's centre, and its distance r
// follows up = r cos g - p, and across <= r sin g + d, where p and d are the observer's own. Lower
// than -a means up + across tan a < 0, which holds when cos(g - a) < (p cos a - d sin a) / r.
FarBelow::FarBelow(const SatRec& satrec, const GroundObserver& observer, Instant from, Instant to) {
    const double t = std::max(std::abs(minutesSinceEpoch(satrec, from)),
                              std::abs(minutesSinceEpoch(satrec, to)));
    const OrbitBounds bounds = boundsOf(satrec, t);
    const double a = (marginDegrees - elevation) * deg2rad;
    nearestAngle_ =
        a + std::acos((observer.upKm() * std::cos(a) - observer.acrossKm() * std::sin(a)) /
                      (bounds.largestDistance * radiusEarthKm));
    angularSpeed_ = bounds.angularSpeed / 60.0 + earthRotation;
}

Instant FarBelow::sureUntil(Instant at, double upKm, double distanceKm) const {
    const double seconds = (std::acos(upKm / distanceKm) - nearestAngle_) / angularSpeed_;
    return seconds > 0.0 ? at + seconds : at;
}

}  // namespace veloran
