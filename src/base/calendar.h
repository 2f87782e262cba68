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

/// The calendar parts of `t`, nanoseconds included. `t` has to be finite and within the years that
/// a 64-bit day count can tell; anything else stops the program.
CivilTime civilTime(Instant t);

/// Midnight of a calendar day. Months and days outside their range roll over (day 200 of January
/// is a day in July, month 13 is January of the next year), as calendars do. Absent where the year
/// is beyond what a double of seconds can hold to the second.
std::optional<Instant> instantFromDate(std::int64_t year, std::int64_t month, std::int64_t day);

/// Ordinal day within the year of a moment: 1 January is 1.
std::int64_t dayOfYear(Instant t);

}  // namespace veloran
