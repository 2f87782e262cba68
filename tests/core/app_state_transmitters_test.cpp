#include <gtest/gtest.h>

#include "support/core_world.h"

namespace veloran::test {
namespace {

const char* const kFile = "/data/transmitters.json";

class Channels : public ::testing::Test {
  protected:
    void startWithFile(const std::string& text) {
        world.machine.settings.set("tleCategories", std::vector<std::string>{"amateur"});
        world.cacheGroup("amateur", ommGroup({{"ISS (ZARYA)", 25544}, {"OTHER", 5}}));
        world.machine.files.files[kFile] = text;
        AppConfig config;
        config.transmitterFile = kFile;
        world.start(config);
        world.load();
    }
    AppState& app() { return *world.app; }

    CoreWorld world;
};

TEST_F(Channels, ReadableFileReplacesTheBuiltinList) {
    startWithFile(
        R"({"satellites":[{"name":"X","norad_id":5,"transmitters":[
            {"freq":145000000,"mode":"FM","description":"","direction":"down"}]}]})");
    EXPECT_EQ(app().transmitterDB().size(), 1u);
    EXPECT_EQ(world.body(5)->transmitters.size(), 1u);
    EXPECT_TRUE(world.body(25544)->transmitters.empty());
}

TEST_F(Channels, OneBadChannelSendsTheLoaderToTheBuiltinList) {
    startWithFile(
        R"({"satellites":[{"name":"X","norad_id":5,"transmitters":[
            {"freq":145000000,"description":"","direction":"down"}]}]})");
    EXPECT_EQ(app().transmitterDB().size(), 6u);
    EXPECT_TRUE(world.body(5)->transmitters.empty());
    EXPECT_EQ(world.body(25544)->transmitters.size(), 2u);
}

TEST_F(Channels, MissingFileLeavesTheBuiltinList) {
    AppConfig config;
    config.transmitterFile = "/nowhere.json";
    world.start(config);
    world.load();
    EXPECT_EQ(app().transmitterDB().size(), 6u);
}

class Selecting : public ::testing::Test {
  protected:
    Selecting() {
        satellite->transmitters = {channel(435.64e6), channel(145.965e6, "up")};
        world.start();
    }
    AppState& app() { return *world.app; }

    CoreWorld world;
    SatellitePtr satellite = std::make_shared<Satellite>("S", 7);
};

TEST_F(Selecting, DownlinkBringsItsUplinkMemoryAndCalibration) {
    world.machine.settings.set("calOffset_sat_7_tx_435640000", 40.0);
    app().selectTransmitter(satellite->transmitters[0], satellite);
    EXPECT_EQ(app().selectedTransmitter.get()->freq, 435.64e6);
    EXPECT_EQ(app().selectedUplinkTransmitter.get()->freq, 145.965e6);
    EXPECT_EQ(app().currentSatCalibration, 40);
    EXPECT_EQ(world.machine.settings.number("lastTxHz_7"), 435.64e6);
    EXPECT_EQ(app().preferredTransmitter(*satellite)->freq, 435.64e6);
}

TEST_F(Selecting, UplinkAloneHasNoPairAndIsRememberedAllTheSame) {
    world.machine.settings.set("calOffset_sat_7_tx_145965000", 40.0);
    app().selectTransmitter(satellite->transmitters[1], satellite);
    EXPECT_FALSE(app().selectedUplinkTransmitter.get());
    EXPECT_EQ(app().currentSatCalibration, 40);
    EXPECT_EQ(world.machine.settings.number("lastTxHz_7"), 145.965e6);
}

TEST_F(Selecting, NothingClearsChannelsAndCalibration) {
    app().selectTransmitter(satellite->transmitters[0], satellite);
    app().bumpSatCalibration(10);
    app().selectTransmitter(std::nullopt, satellite);
    EXPECT_FALSE(app().selectedTransmitter.get());
    EXPECT_FALSE(app().selectedUplinkTransmitter.get());
    EXPECT_EQ(app().currentSatCalibration, 0);
    EXPECT_EQ(world.machine.settings.number("lastTxHz_7"), 435.64e6);
}

}  // namespace
}  // namespace veloran::test
