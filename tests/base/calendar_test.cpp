#include "base/calendar.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>

namespace veloran {
namespace {

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();

Instant date(std::int64_t year, std::int64_t month, std::int64_t day) {
    const auto at = instantFromDate(year, month, day);
    EXPECT_TRUE(at) << year << "-" << month << "-" << day;
    return at.value_or(Instant{});
}

void expectDate(Instant at, std::int64_t year, std::int64_t month, std::int64_t day) {
    const CivilTime civil = civilTime(at);
    EXPECT_EQ(civil.year, year);
    EXPECT_EQ(civil.month, month);
    EXPECT_EQ(civil.day, day);
}

TEST(CivilTime, ReferenceDateIsTheStartOf2001) {
    const CivilTime civil = civilTime(Instant{0.0});
    expectDate(Instant{0.0}, 2001, 1, 1);
    EXPECT_EQ(civil.hour, 0);
    EXPECT_EQ(civil.minute, 0);
    EXPECT_EQ(civil.second, 0);
    EXPECT_EQ(civil.nanosecond, 0);
}

TEST(CivilTime, UnixTimeBeginsIn1970) {
    expectDate(Instant::fromUnixSeconds(0.0), 1970, 1, 1);
}

TEST(CivilTime, PartsBeforeTheReferenceDateCountForwards) {
    const CivilTime civil = civilTime(Instant{-0.25});
    expectDate(Instant{-0.25}, 2000, 12, 31);
    EXPECT_EQ(civil.hour, 23);
    EXPECT_EQ(civil.minute, 59);
    EXPECT_EQ(civil.second, 59);
    EXPECT_EQ(civil.nanosecond, 750000000);
}

TEST(CivilTime, FractionIsCutNotRounded) {
    EXPECT_EQ(civilTime(Instant{0.9999999999}).second, 0);
    EXPECT_EQ(civilTime(Instant{0.9999999999}).nanosecond, 999999999);
    EXPECT_EQ(civilTime(Instant{1.5e-9}).nanosecond, 1);
}

TEST(CivilTime, FractionTooSmallToTellIsTheLastNanosecondBefore) {
    const CivilTime civil = civilTime(Instant{-1e-300});
    EXPECT_EQ(civil.year, 2000);
    EXPECT_EQ(civil.second, 59);
    EXPECT_EQ(civil.nanosecond, 999999999);
}

TEST(CivilTime, EveryDayOfFourCenturiesAgreesWithTheStandardLibrary) {
    using namespace std::chrono;
    const sys_days reference{year{2001} / 1 / 1};
    for (int offset = -200000; offset <= 200000; ++offset) {
        const year_month_day expected{reference + days{offset}};
        const Instant at{offset * 86400.0 + 43200.0};
        const CivilTime civil = civilTime(at);
        ASSERT_EQ(civil.year, static_cast<int>(expected.year())) << offset;
        ASSERT_EQ(civil.month, static_cast<unsigned>(expected.month())) << offset;
        ASSERT_EQ(civil.day, static_cast<unsigned>(expected.day())) << offset;
        ASSERT_EQ(civil.hour, 12) << offset;
        const sys_days newYear{expected.year() / 1 / 1};
        ASSERT_EQ(dayOfYear(at), (reference + days{offset} - newYear).count() + 1) << offset;
        ASSERT_EQ(date(civil.year, civil.month, civil.day), Instant{offset * 86400.0}) << offset;
    }
}

TEST(CivilTime, LeapDaysFollowTheGregorianRule) {
    expectDate(date(2000, 2, 28) + 86400.0, 2000, 2, 29);
    expectDate(date(2024, 2, 28) + 86400.0, 2024, 2, 29);
    expectDate(date(1900, 2, 28) + 86400.0, 1900, 3, 1);
    expectDate(date(2100, 2, 28) + 86400.0, 2100, 3, 1);
}

TEST(CivilTime, FarMomentsHaveADate) {
    EXPECT_TRUE(isCivil(Instant{9.2e18}));
    EXPECT_NEAR(static_cast<double>(civilTime(Instant{9.2e18}).year), 9.2e18 / 31556952.0, 1e4);
    EXPECT_NEAR(static_cast<double>(civilTime(Instant{-9.2e18}).year), -9.2e18 / 31556952.0, 1e4);
}

TEST(CivilTime, FirstAndLastMomentsAreTakenApartToTheSecond) {
    const auto text = [](double seconds) {
        const Instant at{seconds};
        const CivilTime c = civilTime(at);
        return fmt::format("{}-{:02d}-{:02d} {:02d}:{:02d}:{:02d}, day {}", c.year, c.month, c.day,
                           c.hour, c.minute, c.second, dayOfYear(at));
    };
    EXPECT_EQ(text(std::nextafter(0x1p63, 0.0)), "292277026627-12-06 15:13:04, day 340");
    EXPECT_EQ(text(std::nextafter(-0x1p63, 0.0)), "-292277022626-01-27 08:46:56, day 27");
}

TEST(CivilTimeDeathTest, MomentBeyondTheCalendarStopsTheProgram) {
    for (const double seconds : {9.3e18, -1e300, std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(isCivil(Instant{seconds}));
        EXPECT_DEATH(civilTime(Instant{seconds}), "veloran: ");
        EXPECT_DEATH(dayOfYear(Instant{seconds}), "veloran: ");
    }
}

TEST(InstantFromDate, DaysRollOverIntoLaterMonths) {
    expectDate(date(2026, 1, 200), 2026, 7, 19);
    expectDate(date(2024, 1, 366), 2024, 12, 31);
    expectDate(date(2023, 1, 366), 2024, 1, 1);
    expectDate(date(2024, 1, 0), 2023, 12, 31);
    expectDate(date(2024, 3, -1), 2024, 2, 28);
}

TEST(InstantFromDate, MonthsRollOverIntoOtherYears) {
    expectDate(date(2024, 13, 1), 2025, 1, 1);
    expectDate(date(2024, 0, 1), 2023, 12, 1);
    expectDate(date(2024, -11, 1), 2023, 1, 1);
    expectDate(date(2024, 26, 29), 2026, 3, 1);
}

TEST(InstantFromDate, YearsOfSomeMillionsAreExact) {
    expectDate(date(99'999'999, 6, 15), 99'999'999, 6, 15);
    expectDate(date(-99'999'999, 6, 15), -99'999'999, 6, 15);
    expectDate(date(0, 1, 1), 0, 1, 1);
}

TEST(InstantFromDate, DateBeyondExactSecondsIsAbsent) {
    EXPECT_TRUE(instantFromDate(285'000'000, 1, 1));
    EXPECT_FALSE(instantFromDate(286'000'000, 1, 1));
    EXPECT_FALSE(instantFromDate(-286'000'000, 1, 1));
    EXPECT_FALSE(instantFromDate(2024, 1, 105'000'000'000));
    EXPECT_FALSE(instantFromDate(2024, 4'000'000'000, 1));
    for (const std::int64_t extreme : {kLargest, -kLargest - 1}) {
        EXPECT_FALSE(instantFromDate(extreme, 1, 1));
        EXPECT_FALSE(instantFromDate(2024, extreme, 1));
        EXPECT_FALSE(instantFromDate(2024, 1, extreme));
        EXPECT_FALSE(instantFromDate(extreme, extreme, extreme));
    }
}

TEST(DayOfYear, CountsFromOne) {
    EXPECT_EQ(dayOfYear(date(2023, 1, 1)), 1);
    EXPECT_EQ(dayOfYear(date(2023, 12, 31) + 86399.5), 365);
    EXPECT_EQ(dayOfYear(date(2024, 12, 31)), 366);
    EXPECT_EQ(dayOfYear(date(2024, 3, 1)), 61);
}

}  // namespace
}  // namespace veloran
