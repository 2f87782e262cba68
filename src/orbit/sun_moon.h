#pragma once

#include "base/instant.h"
#include "orbit/look_angles.h"
#include "orbit/sub_satellite_point.h"

namespace veloran {

/// Directions of the Sun and the Moon from low-precision series (Astronomical Almanac; Meeus,
/// Astronomical Algorithms, ch. 47, truncated). Geocentric: no parallax, no refraction; the range
/// is the centre distance and the range rate 0. Angles in degrees. For a moment beyond the calendar
/// (see isCivil) nothing here is a number.
TopocentricResult sunTopocentric(Instant at, double obsLat, double obsLon);
TopocentricResult moonTopocentric(Instant at, double obsLat, double obsLon);

/// Where the body stands in the zenith. The latitude is the declination, and `altitudeKm` the
/// distance from the Earth's centre: what a footprint of nearly a quarter of the globe needs.
SubSatellitePoint sunSubPoint(Instant at);
SubSatellitePoint moonSubPoint(Instant at);

/// Geocentric place in the mean equator and equinox of date: radians (ra in 0 up to 2 pi), km.
struct EquatorialPlace {
    double ra = 0;
    double dec = 0;
    double distanceKm = 0;
};
EquatorialPlace sunEquatorial(Instant at);
EquatorialPlace moonEquatorial(Instant at);

/// Mean obliquity of the ecliptic, radians.
double obliquity(Instant at);

}  // namespace veloran
