#pragma once

#include <vector>

namespace veloran {

// The marks of the time axis. They count from its left edge, not from round clock times.

double bestHourStep(double hours);   ///< hours between major ticks
double minorHourStep(double hours);  ///< hours between ticks

enum class TickKind { major, middle, minor };

struct TimelineTick {
    double hours;  ///< from the left edge
    double x;      ///< points
    TickKind kind;
};

/// From the left edge to a little beyond the right one; none for a span of no or endless time.
std::vector<TimelineTick> timelineTicks(double hours, double width);

}  // namespace veloran
