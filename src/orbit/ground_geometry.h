#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "base/instant.h"
#include "orbit/satrec.h"
#include "orbit/sub_satellite_point.h"
#include "orbit/vec3.h"

namespace veloran {

/// A point of a map, degrees.
struct GeoPoint {
    double lat = 0;
    double lon = 0;

    bool operator==(const GeoPoint&) const = default;
};
using GeoRing = std::vector<GeoPoint>;

/// The point under a satellite on the ellipsoid (geodetic latitude by iteration); absent where the
/// propagation fails.
std::optional<SubSatellitePoint> subSatellitePoint(const SatRec& satrec, Instant date);
/// The same for a position in the inertial frame, km, and a sidereal angle, radians.
SubSatellitePoint geodeticPoint(const Vec3& position, double gmst);

/// Points from `from` to `to`, both included when the step lands exactly; absent ones left out.
/// Without a positive step there are none.
using SubPointFn = std::function<std::optional<SubSatellitePoint>(Instant)>;
std::vector<SubSatellitePoint> groundTrack(const SubPointFn& subPoint, Instant from, Instant to,
                                           double stepSeconds = 30);
std::vector<SubSatellitePoint> groundTrack(const SatRec& satrec, Instant from, Instant to,
                                           double stepSeconds = 30);

// On a sphere of the equatorial radius. Bearings and angular distances in radians.

/// Ground distance to the circle where the body stands at elevation 0, km.
double footprintRadiusKm(double altitudeKm);
/// `steps` points, the first due north, then clockwise; not repeated at the end. Empty unless the
/// altitude is above 0.
GeoRing footprintPolygon(const SubSatellitePoint& center, int steps = 48);
/// The outline of what a footprint sweeps along a track, as one ring; absent under two points.
std::optional<GeoRing> coverageTube(const std::vector<SubSatellitePoint>& track, int capSteps = 16);
double initialBearing(double fromLat, double fromLon, double toLat, double toLon);
GeoPoint destinationPoint(double fromLat, double fromLon, double bearing, double angularDistance);
/// `steps` + 1 points about a centre, both ends included.
GeoRing arcPoints(GeoPoint center, double startBearing, double endBearing, double angularDistance,
                  int steps);

// A flat map draws a line across the whole world where a ring crosses 180 degrees: cut it there.

/// Closed rings of at least 3 points.
std::vector<GeoRing> splitPolygonAtAntimeridian(const GeoRing& ring);
/// Open strokes of at least 2 points for the same outline.
std::vector<GeoRing> splitPolygonArcsAtAntimeridian(const GeoRing& ring);

}  // namespace veloran
