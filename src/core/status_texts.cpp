#include "core/status_texts.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/checked.h"

namespace veloran {

std::string statusLoaded(std::size_t bodyCount, double ageSeconds) {
    return fmt::format("{} sats | TLE {}", bodyCount, tleAgeText(ageSeconds));
}

std::string statusComputing(std::size_t satelliteCount) {
    return fmt::format("Computing passes for {} satellites...", satelliteCount);
}

std::string statusPasses(std::size_t passCount) {
    return fmt::format("{} passes in next 24h", passCount);
}

std::string statusFailed(const std::vector<DownloadOutcome>& failed) {
    std::vector<std::string> reasons;
    for (const auto& outcome : failed) {
        auto words = outcomeWords(outcome);
        if (std::ranges::find(reasons, words) == reasons.end()) reasons.push_back(words);
    }
    return fmt::format("Download{} failed: {}", failed.size() == 1 ? "" : "s",
                       fmt::join(reasons, ", "));
}

std::string statusTracking(std::string_view satelliteName) {
    return fmt::format("Tracking {}", satelliteName);
}

std::string tleAgeText(double seconds) {
    if (seconds < 60) return "< 1m ago";
    if (seconds < 3600) return fmt::format("{}m ago", checkedInt64(seconds / 60));
    if (seconds < 86400) return fmt::format("{}h ago", checkedInt64(seconds / 3600));
    return fmt::format("{}d ago", checkedInt64(seconds / 86400));
}

std::string outcomeText(const DownloadOutcome& outcome, Instant now) {
    return fmt::format("{}, {}", outcomeWords(outcome), tleAgeText(now - outcome.when));
}

double clampUpdateRate(double hz) {
    return std::max(1.0, std::min(50.0, hz));
}

}  // namespace veloran
