#include "core/tick.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace veloran {
namespace {

/// An armed session through an inverting transponder, half a second of look ahead.
TickInput session() {
    TickInput input;
    input.rangeRate = -3;
    input.rangeRateAhead = -2.99;
    input.downlinkCenterHz = 145800000;
    input.downlinkInverting = true;
    input.uplinkCenterHz = 435000000;
    input.offsets = {2000, -300, 50};
    input.mode = RigProtocolMode::satProtoV1;
    input.connected = true;
    return input;
}

const SatDownlink& downlink(const TickOutput& output) {
    return std::get<SatDownlink>(output.commands.at(0));
}
const SatUplink& uplink(const TickOutput& output) {
    return std::get<SatUplink>(output.commands.at(1));
}

TEST(Tick, OffsetsMoveDownlinkAndInvertedUplinkOppositeWays) {
    const TickOutput output = computeTick(session());
    ASSERT_EQ(output.commands.size(), 2u);
    EXPECT_EQ(downlink(output).restHz, 145801750);
    EXPECT_EQ(uplink(output).restHz, 434997700);
}

TEST(Tick, OffsetsMoveDownlinkAndUprightUplink) {
    TickInput input = session();
    input.downlinkInverting = false;
    EXPECT_EQ(uplink(computeTick(input)).restHz, 435002300);
}

TEST(Tick, PatternACarriesTheCentresAlone) {
    TickInput input = session();
    input.pattern = SatProtoRestPattern::transponderCenter;
    input.offsets.calibration = 1000;
    const TickOutput output = computeTick(input);
    EXPECT_EQ(downlink(output).restHz, 145800000);
    EXPECT_EQ(uplink(output).restHz, 435000000);
    EXPECT_EQ(output.figures.correctedFreq, 145800000 + output.figures.dopplerShift);
}

TEST(Tick, ClassicServerGetsTheOffsetsWhateverThePattern) {
    TickInput input = session();
    input.mode = RigProtocolMode::classic;
    input.pattern = SatProtoRestPattern::transponderCenter;
    const TickOutput output = computeTick(input);
    ASSERT_EQ(output.commands.size(), 1u);
    EXPECT_EQ(std::get<SetFrequency>(output.commands[0]).hz,
              145801750 + output.figures.dopplerShift);
    EXPECT_GT(output.figures.uplinkFreq, 0);
}

TEST(Tick, RitNeverReachesTheUplink) {
    for (const auto mode :
         {RigProtocolMode::satProtoV1, RigProtocolMode::classic, RigProtocolMode::unknown}) {
        TickInput input = session();
        input.mode = mode;
        const double before = computeTick(input).figures.uplinkFreq;
        input.offsets.rit = 5000;
        EXPECT_EQ(computeTick(input).figures.uplinkFreq, before);
    }
}

TEST(Tick, UnknownDialectGetsFrequencies) {
    TickInput input = session();
    input.mode = RigProtocolMode::unknown;
    ASSERT_EQ(computeTick(input).commands.size(), 1u);
    EXPECT_TRUE(std::holds_alternative<SetFrequency>(computeTick(input).commands[0]));
}

TEST(Tick, WithoutChannelsSendsNothingAndClearsTheUplink) {
    TickInput input = session();
    input.downlinkCenterHz.reset();
    input.uplinkCenterHz.reset();
    input.previous = {1, 2, 3, 4};
    const TickOutput output = computeTick(input);
    EXPECT_TRUE(output.commands.empty());
    EXPECT_EQ(output.figures.dopplerShift, 1);
    EXPECT_EQ(output.figures.correctedFreq, 2);
    EXPECT_EQ(output.figures.dopplerRate, 3);
    EXPECT_EQ(output.figures.uplinkFreq, 0);
}

TEST(Tick, UplinkAloneIsNotInvertedAndGoesOutAlone) {
    TickInput input = session();
    input.downlinkCenterHz.reset();
    const TickOutput output = computeTick(input);
    ASSERT_EQ(output.commands.size(), 1u);
    EXPECT_EQ(std::get<SatUplink>(output.commands[0]).restHz, 435000000 + 2000 + 300);
}

TEST(Tick, FailedLookAheadRepeatsTheDownlinkRateAndSendsZeroForTheUplink) {
    TickInput input = session();
    input.rangeRateAhead.reset();
    input.previous.dopplerRate = -7.25;
    const TickOutput output = computeTick(input);
    EXPECT_EQ(output.figures.dopplerRate, -7.25);
    EXPECT_EQ(downlink(output).rateHzS, -7.25);
    EXPECT_EQ(uplink(output).rateHzS, 0);
}

TEST(Tick, WithoutAConnectionComputesAndSendsNothing) {
    TickInput input = session();
    input.connected = false;
    const TickOutput output = computeTick(input);
    EXPECT_TRUE(output.commands.empty());
    EXPECT_NE(output.figures.dopplerShift, 0);
}

TEST(Tick, FrequenciesTheWireCannotCarryStayHere) {
    for (const double garbage :
         {1e300, std::nan(""), std::numeric_limits<double>::infinity(), 9.3e18}) {
        for (const auto mode : {RigProtocolMode::satProtoV1, RigProtocolMode::classic}) {
            TickInput input = session();
            input.mode = mode;
            input.offsets.calibration = garbage;
            EXPECT_TRUE(computeTick(input).commands.empty()) << garbage;
        }
    }
}

TEST(SatProtoRestPattern, ReadsBackFromItsText) {
    EXPECT_EQ(satProtoRestPatternFrom("transponderCenter"), SatProtoRestPattern::transponderCenter);
    EXPECT_EQ(satProtoRestPatternFrom("selectedDL"), SatProtoRestPattern::selectedDL);
    EXPECT_FALSE(satProtoRestPatternFrom("SelectedDL"));
    EXPECT_EQ(rawValue(SatProtoRestPattern::transponderCenter), "transponderCenter");
}

}  // namespace
}  // namespace veloran
