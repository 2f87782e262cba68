#include "ui/map/pass_track_cache.h"

#include <algorithm>
#include <cmath>

namespace veloran {

namespace {

/// A pass in steps. None for a span that no search gives and that stepping would not get through.
bool canBeSampled(const PredictedPass& pass) {
    constexpr double kLongestPass = PassPredictor::maxSearchHours * 3600;
    constexpr double kFarthestTime = 1e12;  // where adding seconds still counts
    const double seconds = pass.setTime - pass.riseTime;
    return seconds >= 0 && seconds <= kLongestPass &&
           std::abs(pass.riseTime.secondsSinceReference) < kFarthestTime;
}

std::vector<SubSatellitePoint> trackOf(const PassInfo& info) {
    constexpr double kLeastStep = 5;
    constexpr double kSteps = 200;
    const auto& pass = info.pass;
    return groundTrack(*info.satellite, pass.riseTime, pass.setTime,
                       std::max(kLeastStep, (pass.setTime - pass.riseTime) / kSteps));
}

std::vector<SubSatellitePoint> coverageTrackOf(const PassInfo& info) {
    constexpr int kSteps = 150;
    return trackForCoverage([&info](Instant at) { return info.satellite->currentSubPoint(at); },
                            info.pass.riseTime, info.pass.setTime, kSteps);
}

/// The same pass, and not one that a later search has seen farther to its end.
bool isStillOf(const PassSpan& cached, const PassSpan& wanted) {
    constexpr double kShift = 60;  // seconds: newer elements move the ends by less
    return isSamePass(cached, wanted) && std::abs(wanted.riseTime - cached.riseTime) < kShift &&
           std::abs(wanted.setTime - cached.setTime) < kShift;
}

bool isPolar(const std::vector<SubSatellitePoint>& track) {
    constexpr double kPolarLatitude = 75;  // degrees
    return std::ranges::any_of(
        track, [](const auto& point) { return std::abs(point.latitudeDeg) > kPolarLatitude; });
}

std::vector<GeoRing> outlineOf(const GroundRegion& region) {
    std::vector<GeoRing> arcs;
    for (const GeoRing& ring : region.rings) {
        const auto cut = splitPolygonArcsAtAntimeridian(ring);
        arcs.insert(arcs.end(), cut.begin(), cut.end());
    }
    return arcs;
}

}  // namespace

void PassTrackCache::recomputePassCache(const std::optional<PassInfo>& selectedPass) {
    const auto wanted = selectedPass
                            ? std::optional(spanOf(selectedPass->noradId(), selectedPass->pass))
                            : std::nullopt;
    if (wanted && cachedPass && isStillOf(*cachedPass, *wanted)) return;
    *this = {};
    if (!selectedPass) return;
    cachedPass = wanted;
    if (!canBeSampled(selectedPass->pass)) return;
    cachedTrack = trackOf(*selectedPass);
    const auto track = coverageTrackOf(*selectedPass);
    cachedCoverage = sweptRegion(track);
    if (!isPolar(track)) cachedCoverageArcs = outlineOf(cachedCoverage);
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

}  // namespace veloran
