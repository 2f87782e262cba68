#include "rig/sat_command.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "base/text.h"

namespace veloran::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(SatCommand, WholeValuesHaveNoPointAndOthersThreeDecimals) {
    EXPECT_EQ(formatSatCommand("sat_dl", 145800000, -1234.5678, 12.5),
              "\\sat_dl 145800000 -1234.568 12.500\n");
    EXPECT_EQ(formatSatCommand("sat_ul", 435000000.5, 0, 0.0), "\\sat_ul 435000000.500 0 0\n");
}

TEST(SatCommand, WithoutARateThereAreTwoFields) {
    EXPECT_EQ(formatSatCommand("sat_dl", 145800000, 0, std::nullopt), "\\sat_dl 145800000 0\n");
}

TEST(SatCommand, TheFractionIsLookedForBeforeRounding) {
    EXPECT_EQ(satNumber(0.0004), "0.000");
    EXPECT_EQ(satNumber(0.9999), "1.000");
    EXPECT_EQ(satNumber(-0.0004), "-0.000");
}

TEST(SatCommand, NegativeZeroIsZero) {
    EXPECT_EQ(satNumber(-0.0), "0");
}

TEST(SatCommand, AnyValueReadsBackWithinHalfAMillihertz) {
    std::mt19937_64 random(20261121);
    std::uniform_real_distribution<double> hertz(-1e10, 1e10);
    for (int i = 0; i < 10000; ++i) {
        const double value = hertz(random);
        const auto text = satNumber(value);
        const auto read = parseDouble(text);
        ASSERT_TRUE(read.has_value()) << text;
        EXPECT_NEAR(*read, value, 0.000501) << text;
    }
}

TEST(SatCommand, FrequencyIsTruncatedWhereAnUpdateKeepsTheFraction) {
    EXPECT_EQ(frequencyCommand(437123456.789), "F 437123456\n");
    EXPECT_EQ(satNumber(437123456.789), "437123456.789");
    EXPECT_EQ(frequencyCommand(-5.9), "F -5\n");
}

TEST(SatCommand, ModeAndPassband) {
    EXPECT_EQ(modeCommand("USB", 2400), "M USB 2400\n");
}

TEST(SatCommand, BlanksOfANameBecomeUnderscoresAndNothingElseChanges) {
    EXPECT_EQ(armCommand("ISS (ZARYA)"), "\\sat_aos ISS_(ZARYA)\n");
    EXPECT_EQ(armCommand("AO 91"), armCommand("AO_91"));
    EXPECT_EQ(armName("a\tb  c"), "a\tb__c");
}

TEST(SatCommandDeathTest, FrequenciesBeyondSixtyFourBitsStopTheProgram) {
    EXPECT_DEATH(frequencyCommand(std::nan("")), "veloran: ");
    EXPECT_DEATH(frequencyCommand(kInfinity), "veloran: ");
    EXPECT_DEATH(frequencyCommand(9.3e18), "veloran: ");
    EXPECT_DEATH(satNumber(9.3e18), "veloran: ");
}

TEST(SatCommand, ValuesThatAreNoNumberCountAsFractions) {
    EXPECT_EQ(satNumber(kInfinity), "inf");
    EXPECT_EQ(satNumber(std::nan("")), "nan");
}

}  // namespace
}  // namespace veloran::test
