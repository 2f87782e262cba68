#include <gtest/gtest.h>

#include <tuple>

#include "elements/omm_parser.h"
#include "support/core_world.h"
#include "support/vector_halves.h"

namespace veloran::test {
namespace {

using Lines = std::vector<std::string>;

class Session : public ::testing::Test {
  protected:
    Session() {
        satellite->transmitters = {channel(435.64e6, "down", "SSB"),
                                   channel(145.965e6, "up", "SSB")};
        world.start();
        world.setRangeRates(-3, -2.99);
    }
    AppState& app() { return *world.app; }
    std::optional<Transmitter> downlink() { return satellite->transmitters[0]; }

    CoreWorld world;
    SatellitePtr satellite = std::make_shared<Satellite>("RS 44", 44909);
};

TEST_F(Session, StopWithoutSessionAndClientJustClears) {
    app().currentRIT = 5.0;
    app().currentPassbandOffset = 6.0;
    app().selectedUplinkTransmitter = channel(1, "up");
    app().statusMessage = std::string("text");
    app().stopTracking();
    EXPECT_EQ(app().currentRIT, 0);
    EXPECT_EQ(app().currentPassbandOffset, 0);
    EXPECT_FALSE(app().selectedUplinkTransmitter.get());
    EXPECT_EQ(app().statusMessage.get(), "");
    EXPECT_EQ(app().rigClient(), nullptr);
    EXPECT_TRUE(world.machine.tcp.connections.empty());
}

TEST_F(Session, StartBindsBodyChannelsAndRadio) {
    app().startTracking(satellite, downlink());
    EXPECT_TRUE(app().isTracking);
    EXPECT_EQ(app().trackingSatellite.get(), satellite);
    EXPECT_EQ(app().selectedTransmitter.get()->freq, 435.64e6);
    EXPECT_EQ(app().selectedUplinkTransmitter.get()->freq, 145.965e6);
    EXPECT_EQ(app().statusMessage.get(), "Tracking RS 44");
    ASSERT_EQ(world.machine.tcp.connections.size(), 1u);
    EXPECT_EQ(world.machine.tcp.newest().host, "localhost");
    EXPECT_EQ(world.machine.tcp.newest().port, 4532);
    EXPECT_EQ(world.machine.settings.number("lastTxHz_44909"), 435.64e6);
}

TEST_F(Session, FirstTickComesOneIntervalLater) {
    app().startTracking(satellite, downlink());
    EXPECT_EQ(app().currentDopplerShift, 0);
    world.machine.loop.advance(0.09);
    EXPECT_EQ(app().currentDopplerShift, 0);
    world.machine.loop.advance(0.02);
    EXPECT_NE(app().currentDopplerShift, 0);
}

TEST_F(Session, RestartOnTheSameBodyDisarmsArmsAndReadsTheCalibrationAgain) {
    world.trackArmed(satellite, downlink());
    app().bumpSatCalibration(500);
    app().bumpRIT(10);
    app().bumpPassbandOffset(20);
    app().startTracking(satellite, downlink());
    EXPECT_EQ(world.takeSent(), (Lines{"\\sat_los\n", "\\sat_aos RS_44\n", "M USB 2400\n"}));
    EXPECT_EQ(app().currentSatCalibration, 0);
    EXPECT_EQ(app().currentRIT, 0);
    EXPECT_EQ(app().currentPassbandOffset, 0);
}

TEST_F(Session, ModeGoesOutOnlyOnALaterSession) {
    app().startTracking(satellite, downlink());
    world.machine.loop.runPosted();
    world.serverAccepts();
    EXPECT_EQ(world.takeSent(), Lines{"\\sat_caps\n"});
    world.serverSays("RPRT 1\n");
    app().startTracking(satellite, downlink());
    EXPECT_EQ(world.takeSent(), Lines{"M USB 2400\n"});
}

TEST_F(Session, ChannelChosenDuringASessionSendsNoMode) {
    world.trackArmed(satellite, downlink());
    app().selectTransmitter(satellite->transmitters[1], satellite);
    world.machine.loop.runPosted();
    EXPECT_TRUE(world.takeSent().empty());
}

TEST_F(Session, OnTheSunTicksWithoutEffect) {
    app().setTickAngles(nullptr);
    auto sun = std::make_shared<Satellite>("Sun", -1);
    sun->bodyKind = BodyKind::sun;
    sun->transmitters = satellite->transmitters;  // so that something could be sent
    app().startTracking(sun, std::nullopt);
    world.serverAccepts();
    world.takeSent();
    int told = 0;
    const auto subscription = app().objectWillChange.subscribe([&told] { ++told; });
    world.machine.loop.advance(1);
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(world.takeSent().empty());
    EXPECT_TRUE(app().isTracking);
}

TEST_F(Session, MayBeRestartedWithTheFieldsOfTheRunningOne) {
    app().startTracking(satellite, downlink());
    app().startTracking(app().trackingSatellite, app().selectedTransmitter);
    EXPECT_EQ(app().trackingSatellite.get(), satellite);
    EXPECT_EQ(app().selectedTransmitter.get()->freq, 435.64e6);
}

TEST_F(Session, WithoutAnyChannelShowsLookAnglesOnly) {
    satellite->transmitters.clear();
    app().startTracking(satellite, std::nullopt);
    world.serverAccepts();
    world.takeSent();
    app().currentUplinkFreq = 7.0;
    world.machine.loop.advance(0.15);
    EXPECT_EQ(app().currentElevation, 45);
    EXPECT_EQ(app().currentUplinkFreq, 0);
    EXPECT_TRUE(world.takeSent().empty());
    EXPECT_FALSE(world.machine.settings.contains("lastTxHz_44909"));
}

TEST_F(Session, PairIsFoundByTheExactCentreAlone) {
    Transmitter near = *downlink();
    near.freq = *near.freq + 0.5;
    app().startTracking(satellite, near);
    EXPECT_FALSE(app().selectedUplinkTransmitter.get());
}

TEST_F(Session, CalibrationMayBelongToANeighbourOfTheChosenChannel) {
    // Channels 900 Hz apart: the channel nearest to the memory is chosen and remembered, and the
    // calibration is then asked for with that new memory, which the first channel matches as well.
    satellite->transmitters = {channel(145800000), channel(145800900)};
    world.machine.settings.set("lastTxHz_44909", 145801500.0);
    world.machine.settings.set("calOffset_sat_44909_tx_145800000", 11.0);
    world.machine.settings.set("calOffset_sat_44909_tx_145800900", 22.0);
    app().startTracking(satellite, std::nullopt);
    EXPECT_EQ(app().selectedTransmitter.get()->freq, 145800900);
    EXPECT_EQ(app().currentSatCalibration, 11);
}

TEST_F(Session, UpdateRateIsClampedAndStored) {
    app().updateDopplerRate(100);
    EXPECT_EQ(app().dopplerUpdateHz, 50);
    app().updateDopplerRate(0);
    EXPECT_EQ(app().dopplerUpdateHz, 1);
    EXPECT_EQ(world.machine.settings.number("dopplerUpdateHz"), 1);
    EXPECT_EQ(world.machine.loop.timerCount(), 0u);
}

TEST_F(Session, UpdateRateReplacesTheTimerOfARunningSession) {
    app().startTracking(satellite, downlink());
    app().updateDopplerRate(50);
    int ticks = 0;
    app().setTickAngles([&ticks](const Satellite&, Instant) -> std::optional<AppState::TickAngles> {
        ++ticks;
        return std::nullopt;
    });
    world.machine.loop.advance(0.11);
    EXPECT_EQ(ticks, 5);
    EXPECT_TRUE(app().isTracking);
}

TEST_F(Session, TheRateIsTakenAsItStandsWhenASessionBegins) {
    // The control clamps it, but a stored one is not touched.
    for (const auto& [rate, seconds, expected] :
         {std::tuple(100.0, 1.005, 100), std::tuple(0.25, 11.5, 2), std::tuple(60.0, 1.005, 60)}) {
        app().dopplerUpdateHz = rate;
        app().startTracking(satellite, downlink());
        int ticks = 0;
        app().setTickAngles(
            [&ticks](const Satellite&, Instant) -> std::optional<AppState::TickAngles> {
                ++ticks;
                return std::nullopt;
            });
        world.machine.loop.advance(seconds);
        EXPECT_EQ(ticks, expected) << rate << " Hz";
        EXPECT_EQ(app().dopplerUpdateHz, rate);
    }
}

TEST_F(Session, ATickComputesWithTheUpperHalvesOfTheVectorRegistersFree) {
    const bool isSeen = canSeeUpperHalves();
    app().startTracking(satellite, downlink());
    int ticks = 0;
    bool wereInUse = false;
    app().setTickAngles([&](const Satellite&, Instant) -> std::optional<AppState::TickAngles> {
        ++ticks;
        wereInUse |= isSeen && areUpperHalvesInUse();
        dirtyUpperHalves();
        return std::nullopt;
    });
    dirtyUpperHalves();
    world.machine.loop.advance(1.05);
    EXPECT_EQ(ticks, 10);
    EXPECT_FALSE(wereInUse);
}

TEST_F(Session, StopKeepsChannelCalibrationFiguresAndConnection) {
    world.trackArmed(satellite, downlink());
    app().bumpSatCalibration(300);
    world.machine.loop.advance(0.1);
    const double shift = app().currentDopplerShift;
    world.takeSent();
    app().stopTracking();
    world.machine.loop.advance(3);  // the probe has its end too
    EXPECT_EQ(world.takeSent(), Lines{"\\sat_los\n"});
    EXPECT_EQ(world.machine.loop.timerCount(), 0u);
    EXPECT_TRUE(app().selectedTransmitter.get());
    EXPECT_EQ(app().currentSatCalibration, 300);
    EXPECT_EQ(app().currentDopplerShift, shift);
    EXPECT_TRUE(app().rigConnected);
    EXPECT_FALSE(world.machine.tcp.newest().cancelled);
}

TEST_F(Session, RadioTakenByAnotherClientIsTakenBack) {
    world.trackArmed(satellite, downlink());
    world.machine.loop.advance(0.1);
    ASSERT_EQ(world.takeSent().size(), 2u);
    world.serverSays("RPRT -11\nRPRT -11\n");
    EXPECT_EQ(app().rigSatProtoStatus.get(), "Re-armed (radio was claimed by another client)");
    EXPECT_FALSE(app().rigSatProtoArmed);
    EXPECT_EQ(world.takeSent().front(), "\\sat_aos RS_44\n");
    world.serverSays("RPRT 0\nRPRT 0\n");
    EXPECT_TRUE(app().rigSatProtoArmed);
    app().stopTracking();
    EXPECT_NE(app().rigSatProtoStatus.get(), "");
}

TEST_F(Session, RadioThatIsTakenAfterItsEndIsLeftAlone) {
    world.trackArmed(satellite, downlink());
    world.machine.loop.advance(0.1);
    app().stopTracking();
    world.takeSent();
    world.serverSays("RPRT -11\nRPRT -11\nRPRT 0\n");
    EXPECT_TRUE(world.takeSent().empty());
    EXPECT_EQ(app().rigSatProtoStatus.get(), "");
}

TEST_F(Session, NameWithLineEndsCannotCommandTheRadio) {
    satellite->name = "EVIL\nF 1\r\x7f";
    app().startTracking(satellite, downlink());
    world.machine.loop.runPosted();
    world.serverAccepts();
    world.serverSays("SAT_PROTO=1\nRPRT 0\n");
    EXPECT_EQ(world.takeSent(), (Lines{"\\sat_caps\n", "\\sat_aos EVIL_F_1__\n"}));
}

TEST_F(Session, GarbageFrequenciesNeverReachTheRadio) {
    world.machine.settings.set("calOffset_sat_44909_tx_435640000", 1e300);
    app().startTracking(satellite, downlink());
    world.machine.loop.runPosted();
    world.serverAccepts();
    world.takeSent();
    world.machine.loop.advance(0.15);
    EXPECT_EQ(app().currentSatCalibration, 1e300);
    EXPECT_TRUE(world.takeSent().empty());
}

TEST_F(Session, TickFollowsTheOrbitHalfASecondAhead) {
    app().setTickAngles(nullptr);
    satellite->tle = OMMParser::parse(ommGroup({{"RS-44", 44909}})).at(0);
    satellite->initOrbit();
    app().startTracking(satellite, downlink());
    world.machine.loop.advance(0.1);
    const Instant now = world.machine.loop.now();
    const auto look = [&](Instant at) {
        return *satellite->observe(at, app().obsLatitude, app().obsLongitude, app().obsAltitude);
    };
    EXPECT_EQ(app().currentAzimuth, look(now).azimuth);
    EXPECT_EQ(app().currentElevation, look(now).elevation);
    EXPECT_EQ(app().currentRange, look(now).range);
    const double shift = -435.64e6 * look(now).rangeRate / 299792.458;
    const double ahead = -435.64e6 * look(now + 0.5).rangeRate / 299792.458;
    EXPECT_NEAR(app().currentDopplerShift, shift, 1e-6);
    EXPECT_NEAR(app().currentDopplerRate, (ahead - shift) / 0.5, 1e-5);
}

TEST_F(Session, TickWithoutAPositionChangesNothing) {
    app().startTracking(satellite, downlink());
    world.machine.loop.advance(0.1);
    const double shift = app().currentDopplerShift;
    app().setTickAngles([](const Satellite&, Instant) { return std::nullopt; });
    int told = 0;
    const auto subscription = app().objectWillChange.subscribe([&told] { ++told; });
    world.machine.loop.advance(1);
    EXPECT_EQ(told, 0);
    EXPECT_EQ(app().currentDopplerShift, shift);
}

TEST_F(Session, UnreachableServerIsSilentAndTheFiguresGoOn) {
    app().startTracking(satellite, downlink());
    world.machine.tcp.newest().report(TcpState::waiting);
    world.machine.loop.advance(1);
    EXPECT_FALSE(app().rigConnected);
    EXPECT_NE(app().currentDopplerShift, 0);
    EXPECT_TRUE(world.takeSent().empty());
    EXPECT_EQ(app().statusMessage.get(), "Tracking RS 44");
}

TEST_F(Session, PassComputationThatEndsDuringASessionReplacesTheStatusForGood) {
    app().computeAllPasses();
    app().startTracking(satellite, downlink());
    world.machine.loop.runPosted();
    EXPECT_EQ(app().statusMessage.get(), "0 passes in next 24h");
}

TEST_F(Session, EndsWithTheStateAndLeavesNoTimer) {
    world.trackArmed(satellite, downlink());
    world.app.reset();
    world.serverSays("RPRT -11\n");
    world.machine.loop.advance(5);
    EXPECT_EQ(world.machine.loop.timerCount(), 0u);
}

using SessionDeathTest = Session;

TEST_F(SessionDeathTest, PortBeyondSixteenBitsStopsTheProgram) {
    app().rigPort = 70000;
    EXPECT_DEATH(app().startTracking(satellite, downlink()), "veloran: ");
}

}  // namespace
}  // namespace veloran::test
