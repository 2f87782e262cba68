#pragma once

#include <optional>
#include <vector>

#include "core/pass_info.h"
#include "core/same_pass.h"
#include "orbit/ground_geometry.h"
#include "ui/map/ground_region.h"

namespace veloran {

/// The ground track of the selected pass and what its footprint sweeps, computed once a pass.
struct PassTrackCache {
    /// The key: the same pass found anew, with slightly other times, is not computed again.
    std::optional<PassSpan> cachedPass;
    std::vector<SubSatellitePoint> cachedTrack;
    /// All places from where the body is above the horizon at some time of the pass.
    GroundRegion cachedCoverage;
    /// Its outline, cut at the antimeridian; none for a polar pass.
    std::vector<GeoRing> cachedCoverageArcs;

    void recomputePassCache(const std::optional<PassInfo>& selectedPass);
};

/// A new line wherever the longitude jumps by more than 180 degrees.
std::vector<GeoRing> splitAtAntimeridian(const std::vector<SubSatellitePoint>& points);

std::vector<GeoRing> passTrackSegments(const PassTrackCache& cache);
/// The track from `now` - hours to `now` + hours, at most 400 steps of at least 15 seconds.
std::vector<GeoRing> extendedTrackSegments(const Satellite& satellite, Instant now,
                                           double hoursEachSide);

}  // namespace veloran
