#pragma once

#include <cmath>
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

/// A place on the Earth with all that does not change with time. Degrees and km.
class GroundObserver {
  public:
    GroundObserver(double latDeg, double lonDeg, double altKm);

    /// `gmst` in radians, TEME position km and velocity km/s. The elevation of a body right at the
    /// zenith may be NaN: rounding can push its sine past 1.
    TopocentricResult look(const Vec3& satPos, const Vec3& satVel, double gmst) const;

    /// A part of the above, to the last bit, and how far up the body stands from the Earth's
    /// centre, km along the observer's vertical.
    struct Height {
        double elevation = 0;
        double range = 0;
        double up = 0;
    };
    Height height(const Vec3& satPos, double gmst) const;
    /// From the observer to the body, km, in a frame that turns with the Earth: x in the observer's
    /// meridian outward from the axis, y east, z north along the axis.
    Vec3 fromHere(const Vec3& satPos, double gmst) const;
    /// The sine of its elevation times its range, km.
    double heightOver(const Vec3& fromHere) const {
        return cosLat_ * fromHere.x + sinLat_ * fromHere.z;
    }
    /// In the inertial frame, km; with 0 in the frame that turns with the Earth.
    Vec3 positionAt(double gmst) const;

    /// Of the observer from the Earth's centre, km: along the vertical, and across it.
    double upKm() const { return horizontal_ * cosLat_ + z_ * sinLat_; }
    double acrossKm() const { return std::abs(horizontal_ * sinLat_ - z_ * cosLat_); }

  private:
    struct Turned;
    Turned turnedBy(double gmst) const;

    double lonRad_;
    double sinLat_, cosLat_;
    double horizontal_, z_;  // distance from the axis and height above the equator, km
};

/// See GroundObserver::look.
TopocentricResult temeToTopocentric(const Vec3& satPos, const Vec3& satVel, double obsLat,
                                    double obsLon, double obsAlt, double gmst);

/// NaN for a moment beyond the calendar.
double minutesSinceEpoch(const SatRec& satrec, Instant date);
double minutesSinceEpoch(const SatRec& satrec, const JulianDate& date);

/// The whole chain: propagate, then turn to the observer. Absent where the propagation fails, and
/// where time, observer or elements are such nonsense that the range is not a finite number.
std::optional<TopocentricResult> lookAngles(const SatRec& satrec, Instant date,
                                            const GroundObserver& observer);
std::optional<TopocentricResult> lookAngles(const SatRec& satrec, Instant date, double obsLat,
                                            double obsLon, double obsAltKm);

}  // namespace veloran
