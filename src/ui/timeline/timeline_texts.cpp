#include "ui/timeline/timeline_texts.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <ctime>

#include "base/checked.h"
#include "ui/formats.h"
#include "ui/timeline/timeline_scene.h"

namespace veloran {

namespace {

constexpr double kDayHours = 24;

std::optional<std::tm> localTime(Instant t) {
    const double unixSeconds = std::floor(t.unixSeconds());
    if (!fitsInt64(unixSeconds)) return std::nullopt;
    const std::time_t seconds = checkedInt64(unixSeconds);
    std::tm local{};
    if (!localtime_r(&seconds, &local)) return std::nullopt;
    return local;
}

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
    static constexpr std::array<const char*, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const auto local = localTime(start + hoursFromStart * 3600);
    if (!local) return "—";
    const std::string clock = fmt::format("{:02}:{:02}", local->tm_hour, local->tm_min);
    if (!(hoursVisible > kDayHours)) return clock;
    return fmt::format("{} {} {}", kMonths.at(static_cast<std::size_t>(local->tm_mon)),
                       local->tm_mday, clock);
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
