#pragma once

#include <vector>

#include "orbit/ground_geometry.h"

namespace veloran {

/// A coverage tube, as `coverageTube` gives it for this track, as areas that are each smaller than
/// a hemisphere, so that a sphere knows which side of a ring is its inside: the tube itself, or
/// what a long pass of a high body sweeps cut across the track.
std::vector<GeoRing> coveragePieces(const GeoRing& tube,
                                    const std::vector<SubSatellitePoint>& track);

}  // namespace veloran
