#include "ui/formats.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace veloran {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(Formats, SmallOffsetsPrintWithoutSign) {
    EXPECT_EQ(formatHzSigned(0.4), "0 Hz");
    EXPECT_EQ(formatHzSigned(-0.4), "0 Hz");
    EXPECT_EQ(formatHzSigned(0.5), "+0 Hz");
    EXPECT_EQ(formatHzSigned(-100), "-100 Hz") << "an ASCII minus";
}

TEST(Formats, PassbandOffsetMovesTheEndsOfAnInvertingPairApart) {
    EXPECT_EQ(rxSatOutputFreq(145.9e6, 1000, 0) - rxSatOutputFreq(145.9e6, 0, 0), 1000);
    EXPECT_EQ(txSatInputFreq(435.1e6, 1000, true) - txSatInputFreq(435.1e6, 0, true), -1000);
    EXPECT_EQ(txSatInputFreq(435.1e6, 1000, false) - txSatInputFreq(435.1e6, 0, false), 1000);
}

TEST(Formats, EquatorAndMeridianCountAsNorthAndEast) {
    EXPECT_EQ(observerPosition(0, 0), "0.0000°N 0.0000°E");
    EXPECT_EQ(observerPosition(-12.5, -0.25), "12.5000°S 0.2500°W") << "never a minus sign";
}

TEST(Formats, VersionIsAQuestionMarkWithoutOne) {
    EXPECT_EQ(versionText(std::nullopt), "v?");
    EXPECT_EQ(versionText("0.1.0"), "v0.1.0");
}

TEST(Formats, RelativeTimeCountsWholeMinutes) {
    EXPECT_EQ(relativeTime(59), "in 0m");
    EXPECT_EQ(relativeTime(2 * 3600), "in 2h 0m");
    EXPECT_EQ(relativeTime(-1), "now");
}

TEST(Formats, AzimuthsRoundTheCircle) {
    EXPECT_EQ(compassDir(359), "N");
    EXPECT_EQ(compassDir(22.5), "NE");
    EXPECT_EQ(compassDir(-45), "NW");
    EXPECT_EQ(compassDir(-22.6), "NW");
    EXPECT_EQ(compassDir(765), "NE");
}

TEST(Formats, FrequenciesBeyondAnyIntegerStillPrint) {
    EXPECT_EQ(formatBigFreq(2e25), "20000000000000000000.939.328");
    EXPECT_EQ(formatBigFreq(-145800000), "-145.-800.000");
    EXPECT_EQ(formatBigFreq(-5), "0.000.-05");
    EXPECT_EQ(relativeTime(6e19), "in 16666666666666666h 40m");
    EXPECT_EQ(formatDuration(-61), "-1m-1s");
}

TEST(Formats, ATimeBeyondTheCalendarReadsAsNone) {
    EXPECT_EQ(calendarTime(Instant{844357039}, true), "Oct 4 15:37");
    EXPECT_EQ(calendarTime(Instant{844357039}, false), "15:37");
    EXPECT_EQ(calendarTime(Instant{1e30}, true), "—");
    EXPECT_EQ(listTime(Instant{kNan}), "—");
}

TEST(Formats, NumbersThatAreNotFiniteReadAsNone) {
    for (const double odd : {kInfinity, -kInfinity, kNan}) {
        EXPECT_EQ(formatBigFreq(odd), "—");
        EXPECT_EQ(formatMHz(odd), "—");
        EXPECT_EQ(formatHzSigned(odd), "—");
        EXPECT_EQ(rateText(odd), "—");
        EXPECT_EQ(azimuthText(odd), "—");
        EXPECT_EQ(compassDir(odd), "—");
        EXPECT_EQ(formatDuration(odd), "—");
    }
    EXPECT_EQ(relativeTime(kInfinity), "—");
    EXPECT_EQ(relativeTime(kNan), "—");
    EXPECT_EQ(observerPosition(kNan, 1), "—S 1.0000°E");
}

}  // namespace
}  // namespace veloran
