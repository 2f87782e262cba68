#include "base/calendar.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/checked.h"

namespace veloran {

namespace {

constexpr std::int64_t kSecondsPerDay = 86400;

// 2001, the year of the reference date, begins a 400-year cycle of the calendar: the leap day of
// every 4 years, and the one that the century drops or keeps, come at the end of their period.
constexpr std::int64_t kReferenceYear = 2001;
constexpr std::int64_t kDaysPer400Years = 146097;
constexpr std::int64_t kDaysPer100Years = 36524;
constexpr std::int64_t kDaysPer4Years = 1461;
constexpr std::int64_t kDaysPerYear = 365;

using MonthStarts = std::array<std::int64_t, 13>;
constexpr MonthStarts kCommonYear{0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
constexpr MonthStarts kLeapYear{0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335, 366};

constexpr std::int64_t floorDiv(std::int64_t a, std::int64_t b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

constexpr std::int64_t floorMod(std::int64_t a, std::int64_t b) {
    return a % b + (a % b < 0 ? b : 0);
}

constexpr bool isLeapYear(std::int64_t year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

const MonthStarts& monthStarts(std::int64_t year) {
    return isLeapYear(year) ? kLeapYear : kCommonYear;
}

struct YearAndDay {
    std::int64_t year;
    std::int64_t day;  // of the year, from 0
};

YearAndDay yearAndDay(std::int64_t daysSinceReference) {
    const std::int64_t cycle = floorDiv(daysSinceReference, kDaysPer400Years);
    std::int64_t day = daysSinceReference - cycle * kDaysPer400Years;
    // The last century of a cycle and the last year of four are one day longer than the others.
    const std::int64_t century = std::min<std::int64_t>(day / kDaysPer100Years, 3);
    day -= century * kDaysPer100Years;
    const std::int64_t four = day / kDaysPer4Years;
    day -= four * kDaysPer4Years;
    const std::int64_t year = std::min<std::int64_t>(day / kDaysPerYear, 3);
    day -= year * kDaysPerYear;
    return {kReferenceYear + 400 * cycle + 100 * century + 4 * four + year, day};
}

std::int64_t daysUntilYear(std::int64_t year) {
    const std::int64_t years = year - kReferenceYear;
    return years * kDaysPerYear + floorDiv(years, 4) - floorDiv(years, 100) + floorDiv(years, 400);
}

std::int64_t dayNumber(double wholeSeconds) {
    return floorDiv(static_cast<std::int64_t>(wholeSeconds), kSecondsPerDay);
}

}  // namespace

bool isCivil(Instant t) {
    constexpr double twoToThe63 = 9223372036854775808.0;
    return std::abs(t.secondsSinceReference) < twoToThe63;  // false for NaN
}

CivilTime civilTime(Instant t) {
    if (!isCivil(t)) stopProgram("a moment beyond the calendar");
    const double wholeSeconds = std::floor(t.secondsSinceReference);
    const double fraction = t.secondsSinceReference - wholeSeconds;
    const std::int64_t days = dayNumber(wholeSeconds);
    // Not by the seconds of the days before: those of the farthest day need more than 64 bits.
    const std::int64_t secondOfDay =
        floorMod(static_cast<std::int64_t>(wholeSeconds), kSecondsPerDay);

    const auto [year, dayInYear] = yearAndDay(days);
    const MonthStarts& starts = monthStarts(year);
    // No month is longer than 31 days, and all together lack less than a month of 12 times 31.
    auto month = static_cast<std::size_t>(dayInYear / 31);
    if (dayInYear >= starts[month + 1]) ++month;

    CivilTime civil;
    civil.year = year;
    civil.month = static_cast<std::int64_t>(month) + 1;
    civil.day = dayInYear - starts[month] + 1;
    civil.hour = secondOfDay / 3600;
    civil.minute = secondOfDay / 60 % 60;
    civil.second = secondOfDay % 60;
    // A moment closer before the full second than a double can tell has a fraction of 1.
    civil.nanosecond = std::min<std::int64_t>(static_cast<std::int64_t>(fraction * 1e9), 999999999);
    return civil;
}

std::optional<Instant> instantFromDate(std::int64_t year, std::int64_t month, std::int64_t day) {
    constexpr std::int64_t exactDays = 9007199254740992 / kSecondsPerDay;  // 2^53 seconds
    // Beyond these each part alone leaves the range; within them nothing below overflows.
    constexpr std::int64_t yearLimit = 1'000'000'000;
    const auto beyond = [](std::int64_t value, std::int64_t limit) {
        return value < -limit || value > limit;
    };
    if (beyond(year, yearLimit) || beyond(month, 12 * yearLimit) || beyond(day, 366 * yearLimit)) {
        return std::nullopt;
    }
    const std::int64_t monthsFromJanuary = month - 1;
    const std::int64_t wholeYear = year + floorDiv(monthsFromJanuary, 12);
    const auto monthInYear = static_cast<std::size_t>(floorMod(monthsFromJanuary, 12));
    const std::int64_t days =
        daysUntilYear(wholeYear) + monthStarts(wholeYear)[monthInYear] + day - 1;
    if (beyond(days, exactDays)) return std::nullopt;
    return Instant{static_cast<double>(days * kSecondsPerDay)};
}

std::int64_t dayOfYear(Instant t) {
    if (!isCivil(t)) stopProgram("a moment beyond the calendar");
    return yearAndDay(dayNumber(std::floor(t.secondsSinceReference))).day + 1;
}

}  // namespace veloran
