#pragma once

#include <cstdint>
#include <optional>

#include "base/instant.h"

namespace veloran {

/// A moment taken apart in the proleptic Gregorian calendar, UTC.
struct CivilTime {
    std::int64_t year = 2001;
    std::int64_t month = 1;
    std::int64_t day = 1;
    std::int64_t hour = 0;
    std::int64_t minute = 0;
    std::int64_t second = 0;
    std::int64_t nanosecond = 0;
};

/// Whether the calendar can take `t` apart: finite, and its whole seconds fit 64 bits (some 290
/// thousand million years either way).
bool isCivil(Instant t);

/// The calendar parts of `t`. The fraction of the second is cut, not rounded, after nine places.
/// Stops the program unless isCivil(t).
CivilTime civilTime(Instant t);

/// Midnight of a calendar day. Months and days outside their range roll over (day 200 of January
/// is a day in July, month 13 is January of the next year), as calendars do. Absent where the date
/// is beyond what a double of seconds can hold to the second (some 285 million years either way).
std::optional<Instant> instantFromDate(std::int64_t year, std::int64_t month, std::int64_t day);

/// Ordinal day within the year of a moment: 1 January is 1. Stops the program unless isCivil(t).
std::int64_t dayOfYear(Instant t);

}  // namespace veloran
