#pragma once

#include <vector>

#include "orbit/ground_geometry.h"

namespace veloran {

/// A part of the ground: what lies on the left of its rings, seen from above. Rings do not cross
/// each other or themselves. Without a ring it is all of the ground or nothing, as the pole is.
struct GroundRegion {
    std::vector<GeoRing> rings;
    bool holdsNorthPole = false;

    bool isEmpty() const { return rings.empty() && !holdsNorthPole; }
    bool operator==(const GroundRegion&) const = default;
};

/// The same points with longitudes that go on over the date line, the shorter way at each step.
GeoRing unwrapped(const GeoRing& points);
/// Degrees eastward from the first point of an unwrapped ring once round to it again: 0, or 360 or
/// -360 round a pole.
double turnOf(const GeoRing& unwrapped);

/// From where a body has its horizon or is above it; nothing unless its altitude is above 0.
GroundRegion footprintRegion(const SubSatellitePoint& center);

/// From where a body that moves along this track has been above the horizon: the union of the
/// footprints of its points, to some hundredths of a degree, though nothing narrower than half a
/// degree is sure to be seen.
GroundRegion sweptRegion(const std::vector<SubSatellitePoint>& track);

/// The track of a body in steps so short that what its footprint sweeps between two of them lies
/// within a tenth of a degree of the two. Both ends are included; `steps` are taken at least.
std::vector<SubSatellitePoint> trackForCoverage(const SubPointFn& subPoint, Instant from,
                                                Instant to, int steps);

}  // namespace veloran
