#include "ui/timeline/timeline_texts.h"

#include <fmt/format.h>

#include <cmath>

#include "ui/formats.h"
#include "ui/timeline/timeline_scene.h"

namespace veloran {

namespace {

constexpr double kDayHours = 24;

}  // namespace

std::string hoursText(double hours) {
    if (!std::isfinite(hours)) return "—";
    return fmt::format("{:.0f}h", hours);
}

std::string countText(std::size_t count) {
    return fmt::format("({})", count);
}

std::optional<std::string> autoThresholdText(double degrees) {
    if (!(degrees > kLeastThreshold)) return std::nullopt;
    return fmt::format("AUTO ≥ {:.0f}°", std::trunc(degrees));
}

std::string timelineLabel(Instant start, double hoursFromStart, double hoursVisible) {
    return calendarTime(start + hoursFromStart * 3600, hoursVisible > kDayHours);
}

std::string passKey(std::int64_t satelliteId, Instant riseTime) {
    return fmt::format("{}_{}", satelliteId, riseTime.secondsSinceReference);
}

std::string spokenPass(const std::string& satellite, const PredictedPass& pass, Instant now) {
    return fmt::format("{} rises {}, {}, highest {}", satellite, timelineLabel(pass.riseTime, 0, 0),
                       relativeTime(pass.riseTime - now), elevationText(pass.maxElevation));
}

std::string timelineSummary(std::size_t shown, const std::optional<std::string>& next,
                            const std::optional<std::string>& marked) {
    std::string text = fmt::format("{} {} shown.", shown, shown == 1 ? "pass" : "passes");
    if (next) text += fmt::format(" Next: {}.", *next);
    if (marked) text += fmt::format(" Marked: {}.", *marked);
    return text;
}

}  // namespace veloran
