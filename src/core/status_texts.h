#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "elements/download_outcome.h"

namespace veloran {

// The texts of the status line, and limits that the settings share with the session.

inline constexpr std::string_view kStatusFetching = "Fetching TLEs...";

std::string statusLoaded(std::size_t bodyCount, double ageSeconds);  ///< "812 sats | TLE 2h ago"
std::string statusComputing(std::size_t satelliteCount);
std::string statusPasses(std::size_t passCount);
/// In place of the passes where there are no elements at all: "Download failed: no answer".
std::string statusFailed(const std::vector<DownloadOutcome>& failed);
std::string statusTracking(std::string_view satelliteName);

/// Age of the element sets, seconds, in the largest whole unit: "< 1m ago", "59m ago", "11d ago".
std::string tleAgeText(double seconds);

/// "98 records, 2h ago".
std::string outcomeText(const DownloadOutcome& outcome, Instant now);

/// The rate of the tracking tick that a wish leads to: 1 to 50 Hz.
double clampUpdateRate(double hz);

}  // namespace veloran
