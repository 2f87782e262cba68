#include <gtest/gtest.h>

#include <limits>

#include "support/core_world.h"

namespace veloran::test {
namespace {

class Settings : public ::testing::Test {
  protected:
    /// Starts the core on a store that holds one value.
    AppState& startWith(const char* key, SettingValue value) {
        world.machine.settings.set(key, std::move(value));
        world.machine.settings.writes.clear();
        world.start();
        return *world.app;
    }

    CoreWorld world;
};

TEST_F(Settings, FirstStartHasItsDefaults) {
    world.start();
    const AppState& app = *world.app;
    EXPECT_EQ(app.obsLatitude, 33.87);
    EXPECT_EQ(app.obsLongitude, -84.34);
    EXPECT_EQ(app.obsAltitude, 300);
    EXPECT_EQ(app.obsName.get(), "Home");
    EXPECT_EQ(app.rigHost.get(), "localhost");
    EXPECT_EQ(app.rigPort, 4532);
    EXPECT_EQ(app.dopplerUpdateHz, 10);
    EXPECT_EQ(app.satProtoRestPattern.get(), SatProtoRestPattern::selectedDL);
    EXPECT_EQ(app.minAutoTrackElevation, 5);
    EXPECT_EQ(app.timelineHoursVisible, 12);
    EXPECT_EQ(app.subscribedCategories.get(), (std::set<std::string>{"amateur", "stations"}));
    EXPECT_TRUE(app.selectedSatelliteIds->empty());
    EXPECT_EQ(app.gridLocator->substr(0, 4), "EM73");
    EXPECT_EQ(app.timelineStartTime.get(), world.machine.loop.now());
}

TEST_F(Settings, ConstructionDoesNothingElse) {
    world.start();
    EXPECT_TRUE(world.machine.settings.writes.empty());
    EXPECT_TRUE(world.machine.http.requests.empty());
    EXPECT_TRUE(world.machine.tcp.connections.empty());
    EXPECT_EQ(world.machine.loop.timerCount(), 0u);
    EXPECT_EQ(world.app->rigClient(), nullptr);
}

TEST_F(Settings, UnknownPatternTextIsPatternBAndStaysUntilAssigned) {
    AppState& app = startWith("satProtoRestPattern", std::string("PatternC"));
    EXPECT_EQ(app.satProtoRestPattern.get(), SatProtoRestPattern::selectedDL);
    EXPECT_EQ(world.machine.settings.text("satProtoRestPattern"), "PatternC");
    app.satProtoRestPattern = SatProtoRestPattern::transponderCenter;
    EXPECT_EQ(world.machine.settings.text("satProtoRestPattern"), "transponderCenter");
}

TEST_F(Settings, StoredZeroesReadAsDefaults) {
    EXPECT_EQ(startWith("obsLon", 0.0).obsLongitude, -84.34);
    EXPECT_EQ(startWith("obsLat", 0.0).obsLatitude, 33.87);
    EXPECT_EQ(startWith("obsAlt", 0.0).obsAltitude, 300);
    EXPECT_EQ(startWith("rigPort", std::int64_t{0}).rigPort, 4532);
}

TEST_F(Settings, ValuesOfTheWrongTypeReadAsMissing) {
    EXPECT_EQ(startWith("obsLat", std::string("51.5")).obsLatitude, 33.87);
    EXPECT_EQ(startWith("rigHost", 7.0).rigHost.get(), "localhost");
    EXPECT_EQ(startWith("tleCategories", std::string("weather")).subscribedCategories->size(), 2u);
    EXPECT_TRUE(startWith("selectedSatIds", true).selectedSatelliteIds->empty());
}

TEST_F(Settings, EmptyListOfGroupsStaysEmpty) {
    EXPECT_TRUE(
        startWith("tleCategories", std::vector<std::string>{}).subscribedCategories->empty());
}

TEST_F(Settings, ValuesThatWouldStopTheProgramReadAsMissing) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double bad : {-90.5, -1e300, 1e300, infinity, std::nan("")}) {
        EXPECT_EQ(startWith("obsLat", bad).obsLatitude, 33.87) << bad;
    }
    for (const double bad : {-180.5, 1e300, -infinity}) {
        EXPECT_EQ(startWith("obsLon", bad).obsLongitude, -84.34) << bad;
    }
    EXPECT_EQ(startWith("obs2Lat", -90.5).obs2Latitude, 0) << "its locator is shown";
    EXPECT_EQ(startWith("obs2Lon", -180.5).obs2Longitude, 0);
    for (const std::int64_t bad : {-1, 65536, 1 << 30}) {
        EXPECT_EQ(startWith("rigPort", bad).rigPort, 4532) << bad;
    }
    for (const double bad : {-10.0, 1e-300, 1e9, infinity}) {
        EXPECT_EQ(startWith("dopplerUpdateHz", bad).dopplerUpdateHz, 10) << bad;
    }
    for (const double bad : {-12.0, 1e-9, 1e300}) {
        EXPECT_EQ(startWith("timelineHours", bad).timelineHoursVisible, 12) << bad;
    }
    EXPECT_EQ(startWith("minAutoTrackElevation", 1e300).minAutoTrackElevation, 5);
}

TEST_F(Settings, UnusualValuesThatDoNoHarmAreTakenAsTheyStand) {
    EXPECT_EQ(startWith("obsLat", 95.0).obsLatitude, 95);
    EXPECT_EQ(startWith("dopplerUpdateHz", 0.5).dopplerUpdateHz, 0.5);
    EXPECT_EQ(startWith("dopplerUpdateHz", 100.0).dopplerUpdateHz, 100);
    EXPECT_EQ(startWith("minAutoTrackElevation", -3.0).minAutoTrackElevation, -3);
}

TEST_F(Settings, SelectionIsWrittenBackWhenItIsRead) {
    const AppState& app = startWith("selectedSatIds", std::vector<std::int64_t>{25544, -1, 25544});
    EXPECT_EQ(app.selectedSatelliteIds.get(), (std::set<std::int64_t>{-1, 25544}));
    EXPECT_EQ(world.machine.settings.writes, std::vector<std::string>{"selectedSatIds"});
    EXPECT_EQ(world.machine.settings.integers("selectedSatIds"),
              (std::vector<std::int64_t>{-1, 25544}));
}

TEST_F(Settings, EveryAssignmentIsStoredAndComesBackAtTheNextStart) {
    world.start();
    AppState& app = *world.app;
    app.obsLatitude = 51.5;
    app.obsLongitude = -0.5;
    app.obsAltitude = 12.5;
    app.obsName = std::string("QTH");
    app.rigHost = std::string("10.0.0.5");
    app.rigPort = 4533;
    app.rigAutoConnect = true;
    app.dopplerUpdateHz = 20.0;
    app.forceClassicRigctld = true;
    app.satProtoRestPattern = SatProtoRestPattern::transponderCenter;
    app.minAutoTrackElevation = 10.0;
    app.polarBearingLine = true;
    app.obs2Enabled = true;
    app.obs2Name = std::string("Portable");
    app.obs2Latitude = -12.5;
    app.obs2Longitude = 99.0;
    app.timelineHoursVisible = 6.0;
    app.subscribedCategories = std::set<std::string>{"weather"};
    app.selectedSatelliteIds = std::set<std::int64_t>{25544};
    EXPECT_EQ(world.machine.settings.writes.size(), 19u);

    world.start();
    const AppState& again = *world.app;
    EXPECT_EQ(again.obsLatitude, 51.5);
    EXPECT_EQ(again.obsLongitude, -0.5);
    EXPECT_EQ(again.obsAltitude, 12.5);
    EXPECT_EQ(again.obsName.get(), "QTH");
    EXPECT_EQ(again.rigHost.get(), "10.0.0.5");
    EXPECT_EQ(again.rigPort, 4533);
    EXPECT_TRUE(again.rigAutoConnect);
    EXPECT_EQ(again.dopplerUpdateHz, 20);
    EXPECT_TRUE(again.forceClassicRigctld);
    EXPECT_EQ(again.satProtoRestPattern.get(), SatProtoRestPattern::transponderCenter);
    EXPECT_EQ(again.minAutoTrackElevation, 10);
    EXPECT_TRUE(again.polarBearingLine);
    EXPECT_TRUE(again.obs2Enabled);
    EXPECT_EQ(again.obs2Name.get(), "Portable");
    EXPECT_EQ(again.obs2Latitude, -12.5);
    EXPECT_EQ(again.obs2Longitude, 99);
    EXPECT_EQ(again.timelineHoursVisible, 6);
    EXPECT_EQ(again.subscribedCategories.get(), std::set<std::string>{"weather"});
    EXPECT_EQ(again.selectedSatelliteIds.get(), std::set<std::int64_t>{25544});
}

TEST_F(Settings, AssignmentOfAnEqualValueIsToldAndStoredToo) {
    world.start();
    int told = 0;
    const auto subscription = world.app->objectWillChange.subscribe([&told] { ++told; });
    world.app->obsLatitude = world.app->obsLatitude.get();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(world.machine.settings.writes, std::vector<std::string>{"obsLat"});
}

TEST_F(Settings, MovingTheObserverLeavesTheLocatorAlone) {
    world.start();
    world.app->obsLatitude = 51.5;
    EXPECT_EQ(world.app->gridLocator->substr(0, 4), "EM73");
}

TEST_F(Settings, ForcedClassicIsHandedToTheFirstClient) {
    world.start();
    world.app->forceClassicRigctld = true;
    EXPECT_EQ(world.app->rigClient(), nullptr);
    world.app->startTracking(std::make_shared<Satellite>("S", 1), std::nullopt);
    EXPECT_TRUE(world.app->rigClient()->forceClassic);
    world.serverAccepts();
    EXPECT_TRUE(world.takeSent().empty());
    EXPECT_EQ(world.app->rigProtocolMode.get(), RigProtocolMode::classic);
}

TEST_F(Settings, ForcedClassicActsAtOnceOnALiveConnection) {
    world.start();
    world.trackArmed(std::make_shared<Satellite>("S", 1), std::nullopt);
    world.app->forceClassicRigctld = true;
    world.machine.loop.runPosted();
    EXPECT_EQ(world.app->rigProtocolMode.get(), RigProtocolMode::classic);
    world.app->forceClassicRigctld = false;
    EXPECT_EQ(world.takeSent(), std::vector<std::string>{"\\sat_caps\n"});
}

}  // namespace
}  // namespace veloran::test
