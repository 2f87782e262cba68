#include "ui/map/pass_track_cache.h"

#include <algorithm>
#include <cmath>

#include "ui/map/coverage_pieces.h"

namespace veloran {

namespace {

constexpr double kPolarLatitude = 75;  // degrees; beyond it a tube folds
constexpr int kDiscSteps = 36;
constexpr int kCapSteps = 24;

/// The pass in at most `samples` steps of at least 5 seconds. None for a span that no search gives
/// and that stepping would not get through.
std::vector<SubSatellitePoint> sampled(const PassInfo& info, double samples) {
    constexpr double kLeastStep = 5;
    constexpr double kLongestPass = PassPredictor::maxSearchHours * 3600;
    const double seconds = info.pass.setTime - info.pass.riseTime;
    constexpr double kFarthestTime = 1e12;  // where adding seconds still counts
    if (!(seconds >= 0 && seconds <= kLongestPass) ||
        !(std::abs(info.pass.riseTime.secondsSinceReference) < kFarthestTime)) {
        return {};
    }
    return groundTrack(*info.satellite, info.pass.riseTime, info.pass.setTime,
                       std::max(kLeastStep, seconds / samples));
}

bool isPolar(const std::vector<SubSatellitePoint>& track) {
    return std::ranges::any_of(
        track, [](const auto& point) { return std::abs(point.latitudeDeg) > kPolarLatitude; });
}

void append(std::vector<GeoRing>& list, const std::vector<GeoRing>& more) {
    list.insert(list.end(), more.begin(), more.end());
}

void coverByDiscs(PassTrackCache& cache, const std::vector<SubSatellitePoint>& track) {
    for (std::size_t i = 0; i < track.size(); i += 2) {
        const GeoRing disc = footprintPolygon(track[i], kDiscSteps);
        append(cache.cachedCoverageFills, splitPolygonAtAntimeridian(disc));
        cache.coverageRings.push_back(disc);
    }
}

void coverByTube(PassTrackCache& cache, const std::vector<SubSatellitePoint>& track) {
    const auto tube = coverageTube(track, kCapSteps);
    if (!tube) return;
    cache.cachedCoverageFills = splitPolygonAtAntimeridian(*tube);
    cache.cachedCoverageArcs = splitPolygonArcsAtAntimeridian(*tube);
    cache.coverageRings = coveragePieces(*tube, track);
}

}  // namespace

void PassTrackCache::recomputePassCache(const std::optional<PassInfo>& selectedPass) {
    if (selectedPass && cachedTrackPassRise == selectedPass->pass.riseTime) return;
    *this = {};
    if (!selectedPass) return;
    cachedTrackPassRise = selectedPass->pass.riseTime;
    cachedTrack = sampled(*selectedPass, 200);
    const auto track = sampled(*selectedPass, 150);
    if (isPolar(track)) {
        coverByDiscs(*this, track);
    } else {
        coverByTube(*this, track);
    }
}

std::vector<GeoRing> splitAtAntimeridian(const std::vector<SubSatellitePoint>& points) {
    std::vector<GeoRing> segments;
    GeoRing current;
    for (const SubSatellitePoint& point : points) {
        if (!current.empty() && std::abs(point.longitudeDeg - current.back().lon) > 180) {
            segments.push_back(std::move(current));
            current.clear();
        }
        current.push_back({point.latitudeDeg, point.longitudeDeg});
    }
    if (!current.empty()) segments.push_back(std::move(current));
    return segments;
}

std::vector<GeoRing> passTrackSegments(const PassTrackCache& cache) {
    return splitAtAntimeridian(cache.cachedTrack);
}

std::vector<GeoRing> extendedTrackSegments(const Satellite& satellite, Instant now,
                                           double hoursEachSide) {
    constexpr double kLeastStep = 15;
    constexpr double kMostSteps = 400;
    const double each = hoursEachSide * 3600;
    return splitAtAntimeridian(groundTrack(satellite, now - each, now + each,
                                           std::max(kLeastStep, 2 * each / kMostSteps)));
}

bool isRoundPole(const GeoRing& ring) {
    bool odd = false;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        if (std::abs(ring[(i + 1) % ring.size()].lon - ring[i].lon) > 180) odd = !odd;
    }
    return odd;
}

}  // namespace veloran
