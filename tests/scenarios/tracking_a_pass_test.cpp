// Whole sessions against a scripted radio server, from the cached elements to the last command.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "base/text.h"
#include "support/core_world.h"
#include "support/radio_server.h"

namespace veloran::test {
namespace {

class TrackingAPass : public ::testing::Test {
  protected:
    TrackingAPass() {
        world.machine.settings.set("tleCategories", std::vector<std::string>{"amateur"});
        world.cacheGroup("amateur", ommGroup({{"RS-44 & BREEZE", 44909}, {"NOAA 19", 33591}}));
        world.start();
        world.load();
        satellite = world.body(44909);
        pass = satellite->passes->at(1);
    }

    AppState& app() { return *world.app; }

    /// Lets the clock run; the server answers every line within a tenth of a second.
    void run(double seconds) {
        const Instant end = world.machine.loop.now() + seconds;
        while (world.machine.loop.now() < end) {
            world.machine.loop.advance(std::min(0.1, end - world.machine.loop.now()));
            serve();
        }
    }
    void serve() {
        for (auto lines = world.takeSent(); !lines.empty(); lines = world.takeSent()) {
            std::string answers;
            for (const auto& line : lines) answers += server.answer(line);
            world.serverSays(answers);
        }
    }
    void startSession() {
        app().startTracking(satellite, satellite->transmitters.at(1));
        world.machine.loop.runPosted();
        acceptConnection();
    }
    void acceptConnection() {
        world.serverAccepts();
        serve();
    }
    /// The fields of the latest line with that command, as numbers.
    std::vector<double> latest(std::string_view command) const {
        for (auto line = server.heard.rbegin(); line != server.heard.rend(); ++line) {
            if (!line->starts_with(command)) continue;
            std::vector<double> numbers;
            for (const auto field : split(trimmed(*line, Blanks::withNewlines), ' ')) {
                if (const auto value = parseDouble(field)) numbers.push_back(*value);
            }
            return numbers;
        }
        return {};
    }

    CoreWorld world;
    RadioServer server;
    SatellitePtr satellite;
    PredictedPass pass;
};

TEST_F(TrackingAPass, SatProtoRadioFollowsFromRiseToSet) {
    world.machine.loop.advance(pass.riseTime - world.machine.loop.now());
    startSession();
    EXPECT_EQ(server.heard,
              (std::vector<std::string>{"\\sat_caps\n", "\\sat_aos RS-44_&_BREEZE\n"}));
    EXPECT_TRUE(app().rigSatProtoArmed);
    EXPECT_EQ(app().rigProtocolMode.get(), RigProtocolMode::satProtoV1);

    server.heard.clear();
    run(0.5);
    ASSERT_GE(server.heard.size(), 4u);
    for (std::size_t i = 0; i < server.heard.size(); ++i) {
        EXPECT_TRUE(
            server.heard[i].starts_with(i % 2 == 0 ? "\\sat_dl 435640000 " : "\\sat_ul 145965000 "))
            << server.heard[i];
    }
    EXPECT_GT(latest("\\sat_dl").at(1), 1000);  // approaching: received too high
    EXPECT_LT(latest("\\sat_ul").at(1), -300);  // so sent too low
    EXPECT_LT(latest("\\sat_dl").at(2), 0);

    run(pass.peakTime - world.machine.loop.now());
    EXPECT_NEAR(app().currentElevation, pass.maxElevation, 0.1);
    EXPECT_LT(std::abs(latest("\\sat_dl").at(1)), 500);

    run(pass.setTime - world.machine.loop.now());
    EXPECT_LT(latest("\\sat_dl").at(1), -1000);
    const auto ticks = static_cast<double>(server.countOf("\\sat_dl"));
    EXPECT_NEAR(ticks, pass.duration * 10, 3);

    app().stopTracking();
    serve();
    EXPECT_EQ(server.heard.back(), "\\sat_los\n");
    EXPECT_FALSE(app().rigSatProtoArmed);
    run(5);
    EXPECT_EQ(server.heard.back(), "\\sat_los\n");
    EXPECT_EQ(app().rigClient()->pendingResponses(), 0u);
}

TEST_F(TrackingAPass, ClassicRadioGetsFallingFrequencies) {
    server.satProto = false;
    world.machine.loop.advance(pass.riseTime - world.machine.loop.now());
    startSession();
    EXPECT_EQ(app().rigProtocolMode.get(), RigProtocolMode::classic);
    run(1);
    const double first = latest("F ").at(0);
    EXPECT_GT(first, 435640000);
    run(pass.setTime - world.machine.loop.now());
    EXPECT_LT(latest("F ").at(0), 435640000);
    app().stopTracking();
    run(1);
    EXPECT_EQ(server.countOf("\\sat_"), 1u);  // the probe
    EXPECT_LT(app().currentUplinkFreq, 145970000);
    EXPECT_GT(app().currentUplinkFreq, 145960000);
}

TEST_F(TrackingAPass, SilentServerGetsFrequenciesAndIsClassicAfterTwoSeconds) {
    app().startTracking(satellite, satellite->transmitters.at(1));
    world.machine.loop.runPosted();
    world.serverAccepts();
    world.machine.loop.advance(1.95);
    EXPECT_EQ(app().rigProtocolMode.get(), RigProtocolMode::unknown);
    const auto sent = world.takeSent();
    EXPECT_EQ(sent.front(), "\\sat_caps\n");
    EXPECT_TRUE(sent.back().starts_with("F 4356"));
    EXPECT_GE(sent.size(), 19u);
    world.machine.loop.advance(0.1);
    EXPECT_EQ(app().rigProtocolMode.get(), RigProtocolMode::classic);
    EXPECT_TRUE(app().isTracking);
}

TEST_F(TrackingAPass, StolenRadioIsArmedAgainAndUpdatesGoOn) {
    startSession();
    run(1);
    bool stolen = true;
    server.special = [&stolen](const std::string& line) -> std::optional<std::string> {
        if (line.starts_with("\\sat_aos")) stolen = false;
        if (stolen && line.starts_with("\\sat_")) return "RPRT -11\n";
        return std::nullopt;
    };
    run(0.1);
    EXPECT_EQ(server.countOf("\\sat_aos"), 3u);  // one more for each of the two lost updates
    EXPECT_TRUE(app().rigSatProtoArmed);
    EXPECT_EQ(app().rigSatProtoStatus.get(), "Re-armed (radio was claimed by another client)");
    server.heard.clear();
    run(1);
    EXPECT_GE(server.countOf("\\sat_dl"), 9u);
}

TEST_F(TrackingAPass, RefusedUplinkIsNeverSentAgain) {
    server.special = [](const std::string& line) -> std::optional<std::string> {
        if (line.starts_with("\\sat_ul")) return "RPRT -9\n";
        return std::nullopt;
    };
    startSession();
    run(1);
    EXPECT_EQ(server.countOf("\\sat_ul"), 1u);
    EXPECT_GE(server.countOf("\\sat_dl"), 9u);

    world.machine.tcp.newest().report(TcpState::failed);
    run(2.1);
    acceptConnection();
    app().startTracking(satellite, satellite->transmitters.at(1));
    run(1);
    EXPECT_TRUE(app().rigSatProtoArmed);
    EXPECT_EQ(server.countOf("\\sat_ul"), 1u);
    EXPECT_GT(app().currentUplinkFreq, 0);
}

TEST_F(TrackingAPass, ServerThatDiesAndReturnsIsArmedAndFedAgain) {
    startSession();
    run(1);
    world.machine.tcp.newest().report(TcpState::failed);
    world.machine.loop.runPosted();
    EXPECT_FALSE(app().rigConnected);
    server.heard.clear();

    const double before = app().currentDopplerShift;
    run(10.05);
    EXPECT_TRUE(server.heard.empty());
    EXPECT_NE(app().currentDopplerShift, before);  // the session itself goes on
    EXPECT_GT(world.machine.tcp.connections.size(), 4u);

    acceptConnection();
    EXPECT_TRUE(app().rigConnected);
    EXPECT_EQ(server.heard.at(0), "\\sat_caps\n");
    EXPECT_EQ(server.heard.at(1), "\\sat_aos RS-44_&_BREEZE\n");
    run(1);
    EXPECT_GE(server.countOf("\\sat_dl"), 9u);
    EXPECT_EQ(server.countOf("\\sat_dl"), server.countOf("\\sat_ul"));
}

TEST_F(TrackingAPass, PassesAreRecomputedWhileTrackingWithoutTouchingTheSession) {
    startSession();
    run(301);
    EXPECT_TRUE(app().isTracking);
    EXPECT_TRUE(app().statusMessage->ends_with(" passes in next 24h"));
    EXPECT_GE(server.countOf("\\sat_dl"), 2990u);
}

}  // namespace
}  // namespace veloran::test
