#include "core/satellite_preferences.h"

#include <gtest/gtest.h>

#include "support/core_world.h"

namespace veloran::test {
namespace {

const std::vector<Transmitter> kChannels{channel(435e6, "up"), channel(145.8e6), channel(437.8e6)};

TEST(PreferredTransmitter, WithNothingStoredIsTheFirstDownlink) {
    EXPECT_EQ(preferredTransmitter(kChannels, 0)->freq, 145.8e6);
}

TEST(PreferredTransmitter, MatchesWithinLessThanOneKilohertz) {
    EXPECT_EQ(preferredTransmitter(kChannels, 437.8e6 + 999.9)->freq, 437.8e6);
    EXPECT_EQ(preferredTransmitter(kChannels, 437.8e6 + 1000.0)->freq, 145.8e6);
}

TEST(PreferredTransmitter, FallsBackToTheFirstDownlinkWithoutAMatch) {
    EXPECT_EQ(preferredTransmitter(kChannels, 2.4e9)->freq, 145.8e6);
}

TEST(PreferredTransmitter, OnlyUplinkIsTakenJustWhenItWasStored) {
    const std::vector<Transmitter> uplinkOnly{channel(435e6, "up")};
    EXPECT_FALSE(preferredTransmitter(uplinkOnly, 0));
    EXPECT_EQ(preferredTransmitter(uplinkOnly, 435e6)->freq, 435e6);
}

TEST(PreferredTransmitter, OfNoChannelsIsAbsent) {
    EXPECT_FALSE(preferredTransmitter({}, 145.8e6));
}

TEST(SatellitePreferences, RememberOneChannelPerSatellite) {
    MemorySettings settings;
    SatellitePreferences preferences(settings);
    preferences.setLastTransmitter(25544, 145.8e6);
    EXPECT_EQ(preferences.lastTransmitterHz(25544), 145.8e6);
    EXPECT_EQ(preferences.lastTransmitterHz(27607), 0);
}

class Calibrations : public ::testing::Test {
  protected:
    MemorySettings settings;
    CalibrationOffsetStore store{settings};
};

TEST_F(Calibrations, OneTranspondersValueLeavesAnotherAlone) {
    store.setTransponderOffset(44909, 435640000, 200);
    EXPECT_EQ(store.transponderOffset(44909, 435640000), 200);
    EXPECT_EQ(store.transponderOffset(44909, 435605000), 0);
}

TEST_F(Calibrations, LegacyValueServesEveryTransponderOfTheSatellite) {
    settings.set("calOffset_sat_44909", 75.0);
    EXPECT_EQ(store.transponderOffset(44909, 435640000), 75);
    EXPECT_EQ(store.transponderOffset(44909, 435605000), 75);
    EXPECT_EQ(store.transponderOffset(27607, 435605000), 0);
    EXPECT_EQ(settings.keys(), std::vector<std::string>{"calOffset_sat_44909"});
}

TEST_F(Calibrations, SavedZeroHidesTheLegacyValueAndClearingRevealsIt) {
    settings.set("calOffset_sat_44909", 75.0);
    store.setTransponderOffset(44909, 435640000, 0);
    EXPECT_EQ(store.transponderOffset(44909, 435640000), 0);
    store.clearTransponderOffset(44909, 435640000);
    EXPECT_EQ(store.transponderOffset(44909, 435640000), 75);
}

TEST_F(Calibrations, CentresThatDifferBelowOneHertzShareAKey) {
    EXPECT_EQ(CalibrationOffsetStore::key(1, 145800000.7),
              CalibrationOffsetStore::key(1, 145800000.2));
}

TEST(SatelliteColorPalette, EqualRemaindersShareAColour) {
    EXPECT_EQ(SatelliteColorPalette::index(25544), 8u);
    EXPECT_EQ(SatelliteColorPalette::index(25560), 8u);
}

TEST(SatelliteColorPalette, SunAndMoonHaveColoursToo) {
    EXPECT_EQ(SatelliteColorPalette::index(-1), 15u);
    EXPECT_EQ(SatelliteColorPalette::index(-2), 14u);
}

}  // namespace
}  // namespace veloran::test
