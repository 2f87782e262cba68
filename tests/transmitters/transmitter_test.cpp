#include "transmitters/transmitter.h"

#include <gtest/gtest.h>

namespace veloran::test {
namespace {

Transmitter spot(double hz) {
    Transmitter channel;
    channel.freq = hz;
    return channel;
}

Transmitter range(double low, double high) {
    Transmitter channel;
    channel.freqLow = low;
    channel.freqHigh = high;
    return channel;
}

TEST(Transmitter, ASpotFrequencyWinsOverARange) {
    auto channel = range(1000000, 3000000);
    channel.freq = 145800000;
    EXPECT_EQ(channel.centerFreqHz(), 145800000);
    EXPECT_EQ(channel.displayFreqMHz(), "145.800 MHz");
}

TEST(Transmitter, ARangeIsCentredInItsMiddle) {
    auto channel = range(435610000, 435670000);
    channel.mode = "SSB/CW";
    channel.description = "Transponder DL";
    EXPECT_EQ(channel.centerFreqHz(), 435640000);
    EXPECT_EQ(channel.displayFreqMHz(), "435.610–435.670 MHz");
    EXPECT_EQ(channel.label(), "435.610–435.670 MHz SSB/CW Transponder DL");
}

TEST(Transmitter, OneEdgeAloneIsNoFrequency) {
    Transmitter low;
    low.freqLow = 435610000;
    Transmitter high;
    high.freqHigh = 435610000;
    for (const auto& channel : {low, high, Transmitter()}) {
        EXPECT_EQ(channel.centerFreqHz(), 0);
        EXPECT_EQ(channel.displayFreqMHz(), "—");
    }
}

TEST(Transmitter, AZeroFrequencyIsAFrequency) {
    EXPECT_EQ(spot(0).displayFreqMHz(), "0.000 MHz");
}

TEST(Transmitter, CopiesShareTheIdentityAndNewValuesDoNot) {
    const auto channel = spot(145800000);
    const auto copy = channel;
    EXPECT_EQ(copy, channel);
    EXPECT_NE(spot(145800000), channel);
}

TEST(Transmitter, ModesForTheRadioIgnoreCaseAndKeepBlanks) {
    EXPECT_EQ(passbandForMode("fm"), 12000);
    EXPECT_EQ(modeToHamlib("lsb"), "LSB");
    EXPECT_EQ(modeToHamlib("L S B"), "USB");
    EXPECT_EQ(modeToHamlib("S S B"), "USB");
    EXPECT_EQ(passbandForMode(" CW"), 2400);
    EXPECT_EQ(modeToHamlib("CW/SSB"), modeToHamlib("SSB/CW"));
    EXPECT_EQ(passbandForMode("CW/SSB"), passbandForMode("SSB/CW"));
}

TEST(Transmitter, TheBuiltInListHasSixSatellitesAndNewIdentitiesEachTime) {
    const auto first = builtinTransmitters();
    const auto second = builtinTransmitters();
    EXPECT_EQ(first.size(), 6U);
    EXPECT_NE(first.at(25544).front().id, second.at(25544).front().id);
    EXPECT_EQ(first.at(27607).back().ctcss, 67.0);
}

}  // namespace
}  // namespace veloran::test
