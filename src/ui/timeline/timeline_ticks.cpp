#include "ui/timeline/timeline_ticks.h"

#include <cmath>

namespace veloran {

namespace {

constexpr double kSecondsPerHour = 3600;
/// More than any stored span: a century would be a million ticks.
constexpr double kEndlessHours = 24 * 366 * 10;

bool isMultiple(double hours, double step) {
    constexpr double kOneSecond = 1.0 / kSecondsPerHour;
    return std::abs(std::remainder(hours, step)) < kOneSecond;
}

TickKind kindOf(double hours, double major) {
    if (isMultiple(hours, major)) return TickKind::major;
    return isMultiple(hours, major / 2) ? TickKind::middle : TickKind::minor;
}

}  // namespace

double bestHourStep(double hours) {
    if (hours <= 4) return 0.5;
    if (hours <= 12) return 1;
    return hours <= 24 ? 2 : 4;
}

double minorHourStep(double hours) {
    if (hours <= 12) return 1.0 / 12;
    return hours <= 24 ? 0.25 : 0.5;
}

std::vector<TimelineTick> timelineTicks(double hours, double width) {
    if (!(hours > 0 && hours <= kEndlessHours)) return {};
    const double major = bestHourStep(hours);
    const double minor = minorHourStep(hours);
    const double totalTime = hours * kSecondsPerHour;
    const int count = static_cast<int>(hours / minor) + 4;
    std::vector<TimelineTick> ticks;
    ticks.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const double h = i * minor;
        ticks.push_back({h, h * kSecondsPerHour / totalTime * width, kindOf(h, major)});
    }
    return ticks;
}

}  // namespace veloran
