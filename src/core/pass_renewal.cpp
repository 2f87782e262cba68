#include "core/pass_renewal.h"

#include <algorithm>
#include <utility>

#include "core/same_pass.h"

namespace veloran {

namespace {

constexpr std::size_t kMostTrackPoints = 201;  // as many as a search makes

bool isUnderWay(const PredictedPass& pass, Instant at) {
    return pass.riseTime <= at && at < pass.setTime;
}

/// Every n-th point, with the first and the last.
std::vector<PassPoint> thinned(std::vector<PassPoint> points) {
    if (points.size() <= kMostTrackPoints) return points;
    std::vector<PassPoint> kept;
    kept.reserve(kMostTrackPoints);
    for (std::size_t i = 0; i < kMostTrackPoints; ++i) {
        kept.push_back(points[i * (points.size() - 1) / (kMostTrackPoints - 1)]);
    }
    return kept;
}

std::vector<PassPoint> joinedTrack(const PredictedPass& early, const PredictedPass& late) {
    std::vector<PassPoint> points;
    for (const auto& point : early.trackPoints) {
        if (point.date < late.riseTime) points.push_back(point);
    }
    points.insert(points.end(), late.trackPoints.begin(), late.trackPoints.end());
    return thinned(std::move(points));
}

void takePeak(PredictedPass& pass, const PredictedPass& from) {
    pass.peakTime = from.peakTime;
    pass.maxElevation = from.maxElevation;
    pass.peakAzimuth = from.peakAzimuth;
}

/// The rise of `early` and all else of `late`.
PredictedPass joined(const PredictedPass& early, PredictedPass late) {
    late.trackPoints = joinedTrack(early, late);
    late.riseTime = early.riseTime;
    late.riseAzimuth = early.riseAzimuth;
    late.duration = late.setTime - late.riseTime;
    return late;
}

PredictedPass renewed(const PredictedPass& entry, const PredictedPass& found,
                      const FormerPasses& former) {
    const bool wasCut = entry.setTime >= former.search.end;
    if (!wasCut && former.sameElements) return entry;
    PredictedPass pass = joined(entry, found);
    if (!wasCut && entry.maxElevation > found.maxElevation) takePeak(pass, entry);
    return pass;
}

}  // namespace

PassList renewedPasses(PassList found, const PassSearch& search, const FormerPasses& former) {
    if (!search.isForObserverOf(former.search)) return found;
    const auto entry = std::ranges::find_if(
        *former.list, [&search](const auto& pass) { return isUnderWay(pass, search.start); });
    if (entry == former.list->end()) return found;

    const auto isEntry = [span = spanOf(0, *entry)](const PredictedPass& pass) {
        return isSamePass(span, spanOf(0, pass));
    };
    const auto again = std::ranges::find_if(found, isEntry);
    PredictedPass kept = again == found.end() ? *entry : renewed(*entry, *again, former);
    const auto isKept = [span = spanOf(0, kept)](const PredictedPass& pass) {
        return isSamePass(span, spanOf(0, pass));
    };
    std::erase_if(found, isKept);
    found.insert(found.begin(), std::move(kept));
    return found;
}

}  // namespace veloran
