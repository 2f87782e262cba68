#include "ui/sky_plot/sky_plot_texts.h"

#include <gtest/gtest.h>

#include <limits>

namespace veloran {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

PredictedPass pass() {
    PredictedPass pass;
    pass.riseTime = Instant{1000};
    pass.peakTime = Instant{1300};
    pass.setTime = Instant{1600};
    return pass;
}

TEST(SkyPlotTexts, NumberThatIsNotFiniteReadsAsADash) {
    for (const double odd : {kNan, kInf, -kInf}) {
        EXPECT_EQ(plotAngleText(odd), "—");
        EXPECT_EQ(plotRangeText(odd), "—");
        EXPECT_EQ(plotVelocityText(odd), "—");
        EXPECT_EQ(plotAccelerationText(odd, 1), "—");
        EXPECT_EQ(plotAccelerationText(1, odd), "—");
        EXPECT_EQ(formatHMS(odd), "—");
    }
}

TEST(SkyPlotTexts, TextsOfOneKindAreEquallyWide) {
    EXPECT_EQ(plotAngleText(5).size(), plotAngleText(359.9).size());
    EXPECT_EQ(plotRangeText(400).size(), plotRangeText(9999).size());
    EXPECT_EQ(plotVelocityText(-0.5).size(), plotVelocityText(12).size());
    EXPECT_EQ(plotAccelerationText(0, 0.0001).size(), plotAccelerationText(0, -0.2).size());
}

TEST(SkyPlotTexts, PhaseIsAtTcaWithinTwentySecondsAndNotAtTwenty) {
    EXPECT_EQ(passPhase(Instant{1280}, pass()), PassPhase::rising);
    EXPECT_EQ(passPhase(Instant{1280.1}, pass()), PassPhase::atTCA);
    EXPECT_EQ(passPhase(Instant{1319.9}, pass()), PassPhase::atTCA);
    EXPECT_EQ(passPhase(Instant{1320}, pass()), PassPhase::setting);
    EXPECT_EQ(passPhase(Instant{1600}, pass()), PassPhase::setting);
    EXPECT_EQ(passPhase(Instant{1600.1}, pass()), PassPhase::ended);
}

TEST(SkyPlotTexts, CountdownRunsToTheBeginningThenToTheEnd) {
    EXPECT_EQ(passCountdown(Instant{940}, pass()), "-1m00s");
    EXPECT_EQ(passCountdown(Instant{1000}, pass()), "+10m00s");
    EXPECT_EQ(passCountdown(Instant{1600}, pass()), "+0m00s");
    EXPECT_EQ(passCountdown(Instant{1600.1}, pass()), "ended");
}

TEST(SkyPlotTexts, CountdownBeyondAllIntegersIsStillAText) {
    EXPECT_FALSE(formatHMS(1e300).empty());
}

TEST(SkyPlotTexts, ColoursTellThePhase) {
    EXPECT_EQ(passPhaseColor(PassPhase::beforeAOS), Ink::secondary);
    EXPECT_EQ(passPhaseColor(PassPhase::rising), Ink::green);
    EXPECT_EQ(passPhaseColor(PassPhase::atTCA), Ink::yellow);
    EXPECT_EQ(passPhaseColor(PassPhase::setting), Ink::orange);
    EXPECT_EQ(passPhaseColor(PassPhase::ended), Ink::secondary);
}

TEST(SkyPlotTexts, ApproachingIsGreen) {
    EXPECT_EQ(rangeRateColor(-0.001), Ink::green);
    EXPECT_EQ(rangeRateColor(0), Ink::orange);
    EXPECT_EQ(rangeRateColor(0.001), Ink::orange);
}

TEST(SkyPlotTexts, DescriptionTellsWhereTheSatelliteIs) {
    const TopocentricResult high{.azimuth = 123.44, .elevation = 45.64};
    const TopocentricResult higher{.azimuth = 124, .elevation = 45.7};
    EXPECT_EQ(skyDescription("", {}, {}), "No satellite selected");
    EXPECT_EQ(skyDescription("RS-44", {}, {}), "RS-44: position unknown");
    EXPECT_EQ(skyDescription("RS-44", high, higher),
              "RS-44: azimuth 123.4°, elevation 45.6°, rising");
    EXPECT_EQ(skyDescription("RS-44", higher, high),
              "RS-44: azimuth 124.0°, elevation 45.7°, setting");
    EXPECT_EQ(skyDescription("RS-44", high, {}), "RS-44: azimuth 123.4°, elevation 45.6°");
    EXPECT_EQ(skyDescription("RS-44", TopocentricResult{.elevation = 0}, higher),
              "RS-44: below the horizon");
}

}  // namespace
}  // namespace veloran
