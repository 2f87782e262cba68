#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "base/instant.h"
#include "orbit/pass_predictor.h"

namespace veloran {

std::string hoursText(double hours);       ///< "12h"
std::string countText(std::size_t count);  ///< "(12)"
/// "AUTO ≥ 5°", degrees cut to whole ones; absent where there is no threshold to speak of.
std::optional<std::string> autoThresholdText(double degrees);
/// A moment in the system's time zone: "HH:mm", and "MMM d HH:mm" where the axis shows more than a
/// day; "—" beyond the calendar.
std::string timelineLabel(Instant start, double hoursFromStart, double hoursVisible);

/// What tells an arch from all others.
std::string passKey(std::int64_t satelliteId, Instant riseTime);

/// "RS-44 rises 12:34, in 5m, highest 45°", for a screen reader.
std::string spokenPass(const std::string& satellite, const PredictedPass& pass, Instant now);
/// "3 passes shown. Next: …. Marked: …."; the sentences about passes as spokenPass makes them.
std::string timelineSummary(std::size_t shown, const std::optional<std::string>& next,
                            const std::optional<std::string>& marked);

}  // namespace veloran
