#include <gtest/gtest.h>

#include "support/core_world.h"

namespace veloran::test {
namespace {

class Tuning : public ::testing::Test {
  protected:
    Tuning() {
        satellite->transmitters = {channel(435.64e6), channel(437.8e6)};
        world.start();
    }
    AppState& app() { return *world.app; }

    CoreWorld world;
    SatellitePtr satellite = std::make_shared<Satellite>("RS-44", 44909);
};

TEST_F(Tuning, SavedCalibrationComesBackOnTheSameTransponder) {
    app().startTracking(satellite, satellite->transmitters[0]);
    app().bumpSatCalibration(100);
    app().bumpSatCalibration(100);
    app().saveSatCalibration();
    app().stopTracking();
    app().startTracking(satellite, satellite->transmitters[1]);
    EXPECT_EQ(app().currentSatCalibration, 0);
    app().startTracking(satellite, satellite->transmitters[0]);
    EXPECT_EQ(app().currentSatCalibration, 200);
}

TEST_F(Tuning, UnsavedCalibrationIsLostAtTheNextChoice) {
    app().startTracking(satellite, satellite->transmitters[0]);
    app().bumpSatCalibration(100);
    app().selectTransmitter(satellite->transmitters[0], satellite);
    EXPECT_EQ(app().currentSatCalibration, 0);
}

TEST_F(Tuning, ClearingWithoutASessionChangesNothing) {
    app().selectTransmitter(satellite->transmitters[0], satellite);
    app().bumpSatCalibration(100);
    world.machine.settings.set("calOffset_sat_44909_tx_435640000", 5.0);
    app().clearCalibration();
    app().saveSatCalibration();
    EXPECT_EQ(app().currentSatCalibration, 100);
    EXPECT_EQ(world.machine.settings.number("calOffset_sat_44909_tx_435640000"), 5);
}

TEST_F(Tuning, ClearedCalibrationMayComeBackFromTheLegacyKey) {
    world.machine.settings.set("calOffset_sat_44909", 75.0);
    app().startTracking(satellite, satellite->transmitters[0]);
    EXPECT_EQ(app().currentSatCalibration, 75);
    app().clearCalibration();
    EXPECT_EQ(app().currentSatCalibration, 0);
    app().startTracking(satellite, satellite->transmitters[0]);
    EXPECT_EQ(app().currentSatCalibration, 75);
}

TEST_F(Tuning, DownlinkTellsWhetherTheTransponderIsInverting) {
    for (const bool inverting : {true, false}) {
        SCOPED_TRACE(inverting);
        satellite->transmitters = {channel(435.64e6, "down", "SSB"),
                                   channel(145.965e6, "up", "SSB")};
        satellite->transmitters[0].inverting = inverting;
        satellite->transmitters[1].inverting = !inverting;
        world.setRangeRates(0, 0);
        app().startTracking(satellite, satellite->transmitters[0]);
        app().bumpPassbandOffset(2000);
        app().updateTracking();
        EXPECT_EQ(app().currentCorrectedFreq, 435.642e6);
        EXPECT_EQ(app().currentUplinkFreq, inverting ? 145.963e6 : 145.967e6);
    }
}

TEST_F(Tuning, BumpsAddUpWithoutALimitAndAreNotStored) {
    const auto writes = world.machine.settings.writes;
    app().bumpRIT(-25);
    app().bumpRIT(1e6);
    app().bumpPassbandOffset(0.5);
    app().bumpSatCalibration(-10);
    EXPECT_EQ(app().currentRIT, 999975);
    EXPECT_EQ(app().currentPassbandOffset, 0.5);
    EXPECT_EQ(app().currentSatCalibration, -10);
    EXPECT_EQ(world.machine.settings.writes, writes);
    app().clearRIT();
    app().clearPassbandOffset();
    EXPECT_EQ(app().currentRIT, 0);
    EXPECT_EQ(app().currentPassbandOffset, 0);
}

}  // namespace
}  // namespace veloran::test
