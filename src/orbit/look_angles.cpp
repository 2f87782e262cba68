#include "orbit/look_angles.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/calendar.h"
#include "orbit/angles.h"
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

double dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vec3 operator-(const Vec3& a, const Vec3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

/// Within this of 2001 `jday` counts as the calendar does: 1902 to 2099.
constexpr double centurySeconds = 36000.0 * 86400.0;

/// jdayFromDate without a look at years and months; the same to the last bit.
JulianDate jdayOfThisCentury(Instant date) {
    constexpr double midnight2001 = 2451910.5;
    const double seconds = date.secondsSinceReference;
    auto whole = static_cast<std::int64_t>(seconds);
    if (static_cast<double>(whole) > seconds) --whole;
    const double fraction = seconds - static_cast<double>(whole);
    const std::int64_t nanosecond =
        std::min<std::int64_t>(static_cast<std::int64_t>(fraction * 1e9), 999999999);
    std::int64_t day = whole / 86400;
    if (whole < day * 86400) --day;
    const std::int64_t secondOfDay = whole - day * 86400;
    const std::int64_t minuteOfDay = secondOfDay / 60;
    const std::int64_t hour = minuteOfDay / 60;
    const double sec = static_cast<double>(secondOfDay - minuteOfDay * 60) +
                       static_cast<double>(nanosecond) / 1000000000.0;
    return {midnight2001 + static_cast<double>(day),
            (sec + static_cast<double>(minuteOfDay - hour * 60) * 60.0 +
             static_cast<double>(hour) * 3600.0) /
                86400.0};
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
    if (std::abs(date.secondsSinceReference) < centurySeconds) return jdayOfThisCentury(date);
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
    const double angle = withoutWholeTurns(secondsOfTime * deg2rad / 240.0);
    return angle < 0.0 ? angle + twoPi : angle;
}

// r = ((N + h) cos phi cos a, (N + h) cos phi sin a, (N (1 - e^2) + h) sin phi), where the angle
// `a` is the longitude in an Earth-fixed frame and the local sidereal angle in an inertial one.
Vec3 observerECEF(double latDeg, double lonDeg, double altKm) {
    return GroundObserver(latDeg, lonDeg, altKm).positionAt(0.0);
}

GroundObserver::GroundObserver(double latDeg, double lonDeg, double altKm)
    : lonRad_(lonDeg * deg2rad),
      sinLat_(std::sin(latDeg * deg2rad)),
      cosLat_(std::cos(latDeg * deg2rad)) {
    const double n = primeVerticalRadius(sinLat_);
    horizontal_ = (n + altKm) * cosLat_;
    z_ = (n * polarFactor + altKm) * sinLat_;
}

/// Where the Earth has turned to.
struct GroundObserver::Turned {
    double sinTheta, cosTheta;  // of the local sidereal angle
    Vec3 position;              // km
};

GroundObserver::Turned GroundObserver::turnedBy(double gmst) const {
    const double theta = gmst + lonRad_;
    const double sinTheta = std::sin(theta);
    const double cosTheta = std::cos(theta);
    return {sinTheta, cosTheta, {horizontal_ * cosTheta, horizontal_ * sinTheta, z_}};
}

Vec3 GroundObserver::positionAt(double gmst) const {
    return turnedBy(gmst).position;
}

TopocentricResult GroundObserver::look(const Vec3& satPos, const Vec3& satVel, double gmst) const {
    const auto [sinTheta, cosTheta, observer] = turnedBy(gmst);
    // v = omega x r
    const Vec3 observerVelocity{-earthRotation * observer.y, earthRotation * observer.x, 0.0};

    const Vec3 r = satPos - observer;
    TopocentricResult look;
    // rho = |r|, rho' = r . v / |r|
    look.range = std::sqrt(dot(r, r));
    look.rangeRate = dot(r, satVel - observerVelocity) / look.range;

    // up = (cos phi cos theta, cos phi sin theta, sin phi) . r; sin el = up / rho
    const double up = (cosLat_ * cosTheta) * r.x + (cosLat_ * sinTheta) * r.y + sinLat_ * r.z;
    look.elevation = std::asin(up / look.range) * rad2deg;

    // east = (-sin theta, cos theta, 0) . r; tan az = east / north
    // north = (-sin phi cos theta, -sin phi sin theta, cos phi) . r
    const double east = -sinTheta * r.x + cosTheta * r.y;
    const double north = -sinLat_ * cosTheta * r.x - sinLat_ * sinTheta * r.y + cosLat_ * r.z;
    look.azimuth = std::atan2(east, north) * rad2deg;
    if (look.azimuth < 0.0) look.azimuth += 360.0;
    return look;
}

GroundObserver::Height GroundObserver::height(const Vec3& satPos, double gmst) const {
    const auto [sinTheta, cosTheta, observer] = turnedBy(gmst);
    const Vec3 r = satPos - observer;
    const double range = std::sqrt(dot(r, r));
    const double up = (cosLat_ * cosTheta) * r.x + (cosLat_ * sinTheta) * r.y + sinLat_ * r.z;
    return {std::asin(up / range) * rad2deg, range, up + upKm()};
}

Vec3 GroundObserver::fromHere(const Vec3& satPos, double gmst) const {
    const auto [sinTheta, cosTheta, observer] = turnedBy(gmst);
    return {cosTheta * satPos.x + sinTheta * satPos.y - horizontal_,
            cosTheta * satPos.y - sinTheta * satPos.x, satPos.z - z_};
}

TopocentricResult temeToTopocentric(const Vec3& satPos, const Vec3& satVel, double obsLat,
                                    double obsLon, double obsAlt, double gmst) {
    return GroundObserver(obsLat, obsLon, obsAlt).look(satPos, satVel, gmst);
}

// The two large parts cancel first, so that the fraction keeps its digits.
double minutesSinceEpoch(const SatRec& satrec, const JulianDate& date) {
    return ((date.jd - satrec.jdsatepoch) + (date.jdFrac - satrec.jdsatepochF)) * minutesPerDay;
}

double minutesSinceEpoch(const SatRec& satrec, Instant date) {
    return minutesSinceEpoch(satrec, jdayFromDate(date));
}

std::optional<TopocentricResult> lookAngles(const SatRec& satrec, Instant date,
                                            const GroundObserver& observer) {
    const JulianDate julian = jdayFromDate(date);
    const Propagation result = propagate(satrec, minutesSinceEpoch(satrec, julian));
    if (result.error != Sgp4Error::none) return std::nullopt;
    const double gmst = gstime(julian.jd + julian.jdFrac);
    const TopocentricResult look =
        observer.look(result.state.position, result.state.velocity, gmst);
    // A state so far out that its square overflows is no place in the sky.
    if (!std::isfinite(look.range) || !std::isfinite(look.rangeRate)) return std::nullopt;
    return look;
}

std::optional<TopocentricResult> lookAngles(const SatRec& satrec, Instant date, double obsLat,
                                            double obsLon, double obsAltKm) {
    return lookAngles(satrec, date, GroundObserver(obsLat, obsLon, obsAltKm));
}

}  // namespace veloran
