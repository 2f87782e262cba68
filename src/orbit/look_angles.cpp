#include "orbit/look_angles.h"

#include <cmath>
#include <limits>

#include "base/calendar.h"
#include "orbit/constants.h"
#include "orbit/sgp4.h"

namespace veloran {

namespace {

constexpr double j2000 = 2451545.0;
/// Rotation of the Earth against the stars, rad/s.
constexpr double earthRotation = 7.2921158553e-5;
/// 1 - e^2 of the ellipsoid.
constexpr double polarFactor = 1.0 - WGS84::e2;

/// Radius of curvature in the prime vertical, km: N = R / sqrt(1 - e^2 sin^2 phi).
double primeVerticalRadius(double sinLat) {
    return WGS84::radiusEarthKm / std::sqrt(1.0 - WGS84::e2 * sinLat * sinLat);
}

/// From the Earth's centre, km: r = ((N + h) cos phi cos a, (N + h) cos phi sin a,
/// (N (1 - e^2) + h) sin phi), where the angle `a` is the longitude in an Earth-fixed frame and the
/// local sidereal angle in an inertial one.
Vec3 observerPosition(double sinLat, double cosLat, double sinAngle, double cosAngle,
                      double altKm) {
    const double n = primeVerticalRadius(sinLat);
    return {(n + altKm) * cosLat * cosAngle, (n + altKm) * cosLat * sinAngle,
            (n * polarFactor + altKm) * sinLat};
}

double dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vec3 operator-(const Vec3& a, const Vec3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

// The two large parts cancel first, so that the fraction keeps its digits.
double minutesSince(const SatRec& satrec, const JulianDate& date) {
    return ((date.jd - satrec.jdsatepoch) + (date.jdFrac - satrec.jdsatepochF)) * minutesPerDay;
}

}  // namespace

// jd = 367 y - [7 (y + [(m + 9) / 12]) / 4] + [275 m / 9] + d + 1721013.5
JulianDate jday(std::int64_t year, std::int64_t mon, std::int64_t day, std::int64_t hr,
                std::int64_t minute, double sec) {
    const auto y = static_cast<double>(year);
    const auto m = static_cast<double>(mon);
    const auto d = static_cast<double>(day);
    const double jd = 367.0 * y - std::floor(7.0 * (y + std::floor((m + 9.0) / 12.0)) / 4.0) +
                      std::floor(275.0 * m / 9.0) + d + 1721013.5;
    const double secondOfDay =
        sec + static_cast<double>(minute) * 60.0 + static_cast<double>(hr) * 3600.0;
    return {jd, secondOfDay / 86400.0};
}

JulianDate jdayFromDate(Instant date) {
    if (!isCivil(date)) {
        constexpr double nan = std::numeric_limits<double>::quiet_NaN();
        return {nan, nan};
    }
    const CivilTime c = civilTime(date);
    const double sec =
        static_cast<double>(c.second) + static_cast<double>(c.nanosecond) / 1000000000.0;
    return jday(c.year, c.month, c.day, c.hour, c.minute, sec);
}

Instant dateFromJday(double jd, double jdFrac) {
    return Instant::fromUnixSeconds(0.0) + (jd + jdFrac - j2000) * 86400.0;
}

// T = (jd - J2000) / 36525
// seconds of time = 67310.54841 + (876600 h + 8640184.812866) T + 0.093104 T^2 - 6.2e-6 T^3
// 240 of them are a degree.
double gstime(double jdut1) {
    const double tut1 = (jdut1 - j2000) / 36525.0;
    const double secondsOfTime = -6.2e-6 * tut1 * tut1 * tut1 + 0.093104 * tut1 * tut1 +
                                 3164400184.812866 * tut1 + 67310.54841;
    const double angle = std::fmod(secondsOfTime * deg2rad / 240.0, twoPi);
    return angle < 0.0 ? angle + twoPi : angle;
}

Vec3 observerECEF(double latDeg, double lonDeg, double altKm) {
    const double lat = latDeg * deg2rad;
    const double lon = lonDeg * deg2rad;
    return observerPosition(std::sin(lat), std::cos(lat), std::sin(lon), std::cos(lon), altKm);
}

TopocentricResult temeToTopocentric(const Vec3& satPos, const Vec3& satVel, double obsLat,
                                    double obsLon, double obsAlt, double gmst) {
    const double lat = obsLat * deg2rad;
    const double theta = gmst + obsLon * deg2rad;  // local sidereal angle
    const double sinLat = std::sin(lat);
    const double cosLat = std::cos(lat);
    const double sinTheta = std::sin(theta);
    const double cosTheta = std::cos(theta);

    // v = omega x r
    const Vec3 observer = observerPosition(sinLat, cosLat, sinTheta, cosTheta, obsAlt);
    const Vec3 observerVelocity{-earthRotation * observer.y, earthRotation * observer.x, 0.0};

    const Vec3 r = satPos - observer;
    TopocentricResult look;
    // rho = |r|, rho' = r . v / |r|
    look.range = std::sqrt(dot(r, r));
    look.rangeRate = dot(r, satVel - observerVelocity) / look.range;

    // up = (cos phi cos theta, cos phi sin theta, sin phi) . r; sin el = up / rho
    const double up = (cosLat * cosTheta) * r.x + (cosLat * sinTheta) * r.y + sinLat * r.z;
    look.elevation = std::asin(up / look.range) * rad2deg;

    // east = (-sin theta, cos theta, 0) . r; tan az = east / north
    // north = (-sin phi cos theta, -sin phi sin theta, cos phi) . r
    const double east = -sinTheta * r.x + cosTheta * r.y;
    const double north = -sinLat * cosTheta * r.x - sinLat * sinTheta * r.y + cosLat * r.z;
    look.azimuth = std::atan2(east, north) * rad2deg;
    if (look.azimuth < 0.0) look.azimuth += 360.0;
    return look;
}

double minutesSinceEpoch(const SatRec& satrec, Instant date) {
    return minutesSince(satrec, jdayFromDate(date));
}

std::optional<TopocentricResult> lookAngles(const SatRec& satrec, Instant date, double obsLat,
                                            double obsLon, double obsAltKm) {
    const JulianDate julian = jdayFromDate(date);
    const Propagation result = propagate(satrec, minutesSince(satrec, julian));
    if (result.error != Sgp4Error::none) return std::nullopt;
    const double gmst = gstime(julian.jd + julian.jdFrac);
    const TopocentricResult look = temeToTopocentric(result.state.position, result.state.velocity,
                                                     obsLat, obsLon, obsAltKm, gmst);
    // A state so far out that its square overflows is no place in the sky.
    if (!std::isfinite(look.range) || !std::isfinite(look.rangeRate)) return std::nullopt;
    return look;
}

}  // namespace veloran
