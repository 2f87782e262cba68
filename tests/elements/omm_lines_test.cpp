#include "elements/omm_lines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace veloran::omm_lines {
namespace {

TEST(FormatExponentNotation, ZeroHasItsOwnForm) {
    EXPECT_EQ(formatExponentNotation(0), " 00000-0");
    EXPECT_EQ(formatExponentNotation(-0.0), " 00000-0");
}

TEST(FormatExponentNotation, SmallNegativeNumber) {
    EXPECT_EQ(formatExponentNotation(-0.00012), "-12000-3");
}

TEST(FormatExponentNotation, MantissaIsATenthAndMore) {
    EXPECT_EQ(formatExponentNotation(1), " 10000+1");
    EXPECT_EQ(formatExponentNotation(0.1), " 10000+0");
}

TEST(FormatExponentNotation, MantissaThatRoundsUpHasSixDigits) {
    EXPECT_EQ(formatExponentNotation(0.999996), " 100000+0");
}

TEST(FormatExponentNotation, EndsForTheSmallestAndTheLargestNumber) {
    EXPECT_TRUE(
        formatExponentNotation(std::numeric_limits<double>::denorm_min()).ends_with("-323"));
    EXPECT_TRUE(formatExponentNotation(-std::numeric_limits<double>::max()).ends_with("+309"));
}

TEST(FormatExponentNotationDeathTest, NumbersWithoutEndStopTheProgram) {
    EXPECT_DEATH(formatExponentNotation(HUGE_VAL), "veloran: ");
    EXPECT_DEATH(formatExponentNotation(NAN), "veloran: ");
}

TEST(FitsEccentricity, TellsWhatTheColumnsConversionCanHold) {
    EXPECT_TRUE(fitsEccentricity(0.5));
    EXPECT_TRUE(fitsEccentricity(-9e11));
    EXPECT_FALSE(fitsEccentricity(1e12));
    EXPECT_FALSE(fitsEccentricity(std::numeric_limits<double>::max()));
}

TEST(ParseEpoch, NoonOfTheFirstOfJanuaryIsDayOneAndAHalf) {
    const auto epoch = parseEpoch("2026-01-01T12:00:00");
    ASSERT_TRUE(epoch);
    EXPECT_EQ(epoch->days, 1.5);
    EXPECT_NE(synthesizeLine1({.epoch = *epoch}).find(" 26001.50000000 "), std::string::npos);
}

TEST(ParseEpoch, MonthsAndDaysRollOverWithinTheTextsYear) {
    EXPECT_EQ(parseEpoch("2025-13-01T00:00:00")->year, 2025);
    EXPECT_EQ(parseEpoch("2025-13-01T00:00:00")->days, 1);
    EXPECT_EQ(parseEpoch("2025-02-30T00:00:00")->days, 61);
}

TEST(ParseEpoch, DatesThatNoCalendarHasAreAbsent) {
    EXPECT_FALSE(parseEpoch("9223372036854775807-01-01T00:00:00"));
    EXPECT_FALSE(parseEpoch("2026-9223372036854775807-01T00:00:00"));
    EXPECT_FALSE(parseEpoch("2026-01-9223372036854775807T00:00:00"));
    EXPECT_FALSE(parseEpoch("9223372036854775808-01-01T00:00:00"));
}

TEST(ParseEpoch, EmptyPiecesCount) {
    EXPECT_FALSE(parseEpoch("2026--04-05T13:09:00"));
    EXPECT_FALSE(parseEpoch("-2026-04-05T13:09:00"));
    EXPECT_FALSE(parseEpoch("2026-04-05T13::09:00"));
    EXPECT_FALSE(parseEpoch("2026-04-05-T13:09:00"));
    EXPECT_FALSE(parseEpoch("2026-04-05T13:09:00:"));
    EXPECT_FALSE(parseEpoch("2026-04T13:09:00"));
    EXPECT_FALSE(parseEpoch("2026-04-05T13:09"));
}

TEST(SynthesizedLines, AreSixtyNineCharactersWhateverTheNumbersAre) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    constexpr std::int64_t kFarthest = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(synthesizeLine1({.noradId = kFarthest,
                               .classification = "classified",
                               .intlDesignator = "9223372036854775807-1",
                               .epoch = {kFarthest, kLargest},
                               .meanMotionDot = -kLargest,
                               .meanMotionDdot = kLargest,
                               .bstar = -kLargest,
                               .ephemerisType = kFarthest,
                               .elementSetNo = kFarthest})
                  .size(),
              69u);
    EXPECT_EQ(synthesizeLine2({.noradId = kFarthest,
                               .inclination = -kLargest,
                               .raan = kLargest,
                               .eccentricity = 1e11,
                               .argPerigee = kLargest,
                               .meanAnomaly = kLargest,
                               .meanMotion = kLargest,
                               .revNumber = kFarthest})
                  .size(),
              69u);
}

TEST(Checksum, CountsPlainDigitsOnly) {
    EXPECT_EQ(checksum("1 -\u0663 7"), 9);
    EXPECT_EQ(checksum("9\u0301"), 0);
}

}  // namespace
}  // namespace veloran::omm_lines
