#pragma once

#include <cstdint>
#include <optional>

#include "base/instant.h"
#include "orbit/satrec.h"
#include "orbit/vec3.h"

namespace veloran {

/// Look angles from an observer. Purely geometric: no refraction, no polar motion, no nutation.
struct TopocentricResult {
    /// Degrees from true north through east, 0 up to 360; exactly 360 by rounding, just west of
    /// north.
    double azimuth = 0;
    double elevation = 0;  ///< degrees above the geodetic horizon, -90 to +90
    double range = 0;      ///< km
    double rangeRate = 0;  ///< km/s, positive when receding
};

/// A Julian date in two parts: `jd` is a midnight, ending in .5, `jdFrac` the fraction of the day.
struct JulianDate {
    double jd = 0;
    double jdFrac = 0;
};

/// Vallado's form, the Gregorian calendar's from March 1900 to February 2100; `jdFrac` is not
/// normalised.
JulianDate jday(std::int64_t year, std::int64_t mon, std::int64_t day, std::int64_t hr,
                std::int64_t minute, double sec);
/// To the nanosecond, cut. Both parts are NaN for a moment beyond the calendar (see isCivil).
JulianDate jdayFromDate(Instant date);
/// Counts the days from J2000 on the base of 1970: not the inverse of jdayFromDate.
Instant dateFromJday(double jd, double jdFrac);

/// Greenwich sidereal angle (IAU 1982), radians, 0 up to 2 pi. UTC is passed as UT1.
double gstime(double jdut1);

/// Earth-fixed position of a geodetic point, km.
Vec3 observerECEF(double latDeg, double lonDeg, double altKm);

/// Angles in degrees, height in km, `gmst` in radians, TEME position km and velocity km/s. The
/// elevation of a body right at the zenith may be NaN: rounding can push its sine past 1.
TopocentricResult temeToTopocentric(const Vec3& satPos, const Vec3& satVel, double obsLat,
                                    double obsLon, double obsAlt, double gmst);

/// NaN for a moment beyond the calendar.
double minutesSinceEpoch(const SatRec& satrec, Instant date);

/// The whole chain: propagate, then turn to the observer. Absent where the propagation fails, and
/// where time, observer or elements are such nonsense that the range is not a finite number.
std::optional<TopocentricResult> lookAngles(const SatRec& satrec, Instant date, double obsLat,
                                            double obsLon, double obsAltKm);

}  // namespace veloran
