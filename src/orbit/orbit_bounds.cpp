#include "orbit/orbit_bounds.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "orbit/constants.h"
#include "orbit/look_angles.h"

// The names are those of the propagation, whose terms are bounded one after the other by the
// largest value of each.

namespace veloran {

namespace {

using namespace WGS84;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// Above this eccentricity ten steps may not solve Kepler's equation, and with more drag than this
/// the orbit of the epoch says little about the span. Such sets are searched sample by sample.
constexpr double largestEccentricity = 0.75;
constexpr double largestShrinking = 0.02;
/// On top of the bounds, which leave out terms of the order of j2 squared.
constexpr double speedMargin = 1.05;
constexpr double derivativeMargin = 2.0;
/// Ten years: until then the digits of an angle suffice for a millimetre.
constexpr double longestMinutes = 5.3e6;
/// No source writes angles of more than a turn. Much larger ones lose their digits, and the orbit
/// jumps from one rounding to the next.
constexpr double largestAngle = 1000.0;

/// Around 2001, s: in March 1900 and February 2100 `jday` leaves out a day, and so does the course.
constexpr double calendarSeconds = 98 * 365.25 * 86400;

bool isInCalendar(Instant date) {
    return std::abs(date.secondsSinceReference) < calendarSeconds;
}

bool hasLinearRates(const SatRec& s) {
    return s.dedt != 0 || s.didt != 0 || s.dmdt != 0 || s.dnodt != 0 || s.domdt != 0;
}

bool hasOrdinaryAngles(const SatRec& s) {
    return std::abs(s.mo) < largestAngle && std::abs(s.nodeo) < largestAngle &&
           std::abs(s.argpo) < largestAngle;
}

/// The orbit within `t` minutes of the epoch.
struct Extremes {
    double smallestAxis, largestAxis;  // Earth radii
    double e;                          // largest size of (axnl, aynl)
    double largestTempe;               // by what drag changes the eccentricity
    double temp1, temp2;               // of the short-period terms
    double longPeriod;
    double meanRate, nodeRate;  // of longitude in the orbit, of the node, rad/min

    bool isKnown = false;
};

Extremes extremesOf(const SatRec& s, double t) {
    Extremes x{};
    const double shrinking =
        t * (std::abs(s.cc1) + t * (std::abs(s.d2) + t * (std::abs(s.d3) + t * std::abs(s.d4))));
    x.smallestAxis = s.ao * (1 - shrinking) * (1 - shrinking);
    x.largestAxis = s.ao * (1 + shrinking) * (1 + shrinking);
    x.largestTempe = std::abs(s.bstar) * (std::abs(s.cc4) * t + 2 * std::abs(s.cc5));
    const double eccentricity = std::max(s.ecco, 1e-3) + x.largestTempe;
    x.longPeriod =
        std::max(std::abs(s.aycof), std::abs(s.xlcof)) / (x.smallestAxis * (1 - eccentricity));
    x.e = eccentricity + x.longPeriod;

    const double pl = x.smallestAxis * (1 - x.e * x.e);
    x.temp1 = 0.5 * j2 / pl;
    x.temp2 = x.temp1 / pl;
    const double drag =
        s.no_unkozai * t *
        (2 * std::abs(s.t2cof) +
         t * (3 * std::abs(s.t3cof) + t * (4 * std::abs(s.t4cof) + t * 5 * std::abs(s.t5cof))));
    x.meanRate = std::abs(s.mdot) + std::abs(s.argpdot) + drag;
    x.nodeRate = std::abs(s.nodedot) + 2 * std::abs(s.nodecf) * t;
    x.isKnown = shrinking <= largestShrinking && x.e <= largestEccentricity && !hasLinearRates(s) &&
                hasOrdinaryAngles(s) && t < longestMinutes;
    return x;
}

double eccentricityRate(const SatRec& s, const Extremes& x) {
    return std::abs(s.bstar) * (std::abs(s.cc4) + std::abs(s.cc5) * 2 * x.meanRate);
}

double angularSpeed(const SatRec& s, const Extremes& x) {
    // The longitude in the orbit by mean motion, perigee and drag; what else moves the perigee, the
    // eccentricity and the long-period terms counts thrice, for the true anomaly follows them more
    // than the mean one.
    const double eta = 1 + std::abs(s.eta);
    const double perigeeRate = std::abs(s.argpdot) + std::abs(s.omgcof) +
                               std::abs(s.xmcof) * 3 * eta * eta * std::abs(s.eta * s.mdot);
    const double longitudeRate =
        x.meanRate + 3 * (perigeeRate + eccentricityRate(s, x) + x.longPeriod * perigeeRate);
    // dv/dM is largest in the perigee.
    const double e = x.e;
    const double argumentRate = longitudeRate * std::sqrt((1 + e) / ((1 - e) * (1 - e) * (1 - e)));
    return speedMargin * (argumentRate * (1 + 8 * x.temp2) + x.nodeRate);
}

/// Whether every propagation gives a place: it neither decays nor leaves the eccentricities that
/// count as sound.
bool neverFails(const SatRec& s, const Extremes& x) {
    const double lowest = x.smallestAxis * (1 - x.e) * (1 - 3 * x.temp2) - x.temp1;
    return lowest > 1.0005 && s.ecco - x.largestTempe > -0.0009;
}

// Kepler's orbit is a sum of turning vectors, sum a_k exp(i k M) with |a_k| <= sqrt(2) a
// (k e / 2)^(k - 1) / k!, from the series of cos E and sin E in Bessel functions with |J_k(x)| <=
// (x / 2)^k / k!. Node and Earth turn it at their rates, and the periodic terms at twice its own:
// what these give is an estimate with room, not a proof. 93 million comparisons with computed
// places used 0.42 of the margin that follows at most.
double sixthDerivative(const SatRec& s, const Extremes& x) {
    constexpr double steepest = 0.5;  // beyond, the series grows for long before it falls
    if (!(x.e <= steepest) || !neverFails(s, x)) return nan;
    const double eta = 1 + std::abs(s.eta);
    const double periodic =
        8 * x.temp2 + 3 * (std::abs(s.xmcof) * eta * eta * eta + std::abs(s.bstar * s.cc5));
    double sum = 0;
    for (int k = 1; k <= 60; ++k) {
        const double factor = std::pow(k * x.e / 2, k - 1) / std::tgamma(k + 1.0);
        const double part = factor * (std::pow(k, 6) + periodic * std::pow(k + 2, 6));
        sum += part;
        if (part < 1e-3 * sum) break;
    }
    const double rate = x.meanRate + x.nodeRate + largestEarthRotation * 60;
    return derivativeMargin * std::sqrt(2.0) * x.largestAxis * std::pow(rate, 6) * sum;
}

}  // namespace

OrbitBounds boundsOf(const SatRec& s, Instant from, Instant to) {
    const double t =
        std::max(std::abs(minutesSinceEpoch(s, from)), std::abs(minutesSinceEpoch(s, to)));
    const Extremes x = extremesOf(s, t);
    if (!x.isKnown || !isInCalendar(from) || !isInCalendar(to)) return {nan, nan, nan, nan};
    OrbitBounds bounds;
    bounds.largestDistance = x.largestAxis * (1 + x.e) * (1 + 3 * x.temp2) + x.temp1;
    bounds.angularSpeed = angularSpeed(s, x);
    bounds.sixthDerivative = sixthDerivative(s, x);
    const bool mayReachLeast = s.ecco - x.largestTempe <= 1.0e-6;
    bounds.kink = mayReachLeast ? 2 * eccentricityRate(s, x) * x.largestAxis : 0.0;
    return bounds;
}

}  // namespace veloran
