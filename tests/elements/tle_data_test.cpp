#include "elements/tle_data.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace veloran {
namespace {

TLEData setAt(std::int64_t year, double days) {
    TLEData set;
    set.epochYear = year;
    set.epochDays = days;
    return set;
}

/// Seconds from 1 January 2001.
constexpr double kNoonOfFirstDay = 43200;

TEST(EpochDate, DayOneAndAHalfIsNoonOfTheFirstOfJanuary) {
    EXPECT_EQ(setAt(2001, 1.5).epochDate(), Instant{kNoonOfFirstDay});
}

TEST(EpochDate, DaysRollOverIntoLaterMonthsAndYears) {
    EXPECT_EQ(setAt(2001, 366).epochDate(), setAt(2002, 1).epochDate());
    EXPECT_EQ(setAt(2001, 0.25).epochDate(), Instant{-86400 + 21600});
    EXPECT_EQ(setAt(2001, -0.5).epochDate(), Instant{-86400 - 43200});
}

TEST(EpochDate, DaysBeyondAnyCalendarAreAbsent) {
    for (const double days : {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, -HUGE_VAL, 1e300,
                              0x1p63, -0x1p63, 9e18, -9e18, 1e15}) {
        EXPECT_EQ(setAt(2026, days).epochDate(), std::nullopt) << days;
    }
    EXPECT_EQ(setAt(std::numeric_limits<std::int64_t>::max(), 1).epochDate(), std::nullopt);
    EXPECT_EQ(setAt(std::numeric_limits<std::int64_t>::min(), 1).epochDate(), std::nullopt);
}

TEST(AgeString, UnderADayIsInHours) {
    const Instant epoch{kNoonOfFirstDay};
    EXPECT_EQ(setAt(2001, 1.5).ageString(epoch + 23 * 3600), "23h");
    EXPECT_EQ(setAt(2001, 1.5).ageString(epoch + 86399), "24h");
}

TEST(AgeString, UnderTenDaysHasOneDecimalAndMoreHasNone) {
    const Instant epoch{kNoonOfFirstDay};
    EXPECT_EQ(setAt(2001, 1.5).ageString(epoch + 3.25 * 86400), "3.2d");
    EXPECT_EQ(setAt(2001, 1.5).ageString(epoch + 86400), "1.0d");
    EXPECT_EQ(setAt(2001, 1.5).ageString(epoch + 10 * 86400), "10d");
    EXPECT_EQ(setAt(2001, 1.5).ageString(epoch + 12 * 86400), "12d");
}

TEST(AgeString, AnEpochToComeReadsAsNegativeHours) {
    const Instant epoch{kNoonOfFirstDay};
    EXPECT_EQ(setAt(2001, 1.5).ageString(epoch - 72 * 3600), "-72h");
    EXPECT_EQ(setAt(2001, 1.5).ageDays(epoch - 86400), -1);
}

TEST(AgeString, WithoutAnEpochThereIsNoAge) {
    EXPECT_EQ(setAt(2026, HUGE_VAL).ageDays(Instant{}), std::nullopt);
    EXPECT_EQ(setAt(2026, HUGE_VAL).ageString(Instant{}), "?");
}

}  // namespace
}  // namespace veloran
