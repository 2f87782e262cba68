#include <algorithm>
#include <map>

#include "golden_transmitters.h"
#include "support/core_world.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

using boost::json::object;

/// Plays the script of one case; entries are compared after each step.
class SessionPlayer {
  public:
    explicit SessionPlayer(const object& satellites) {
        world_.start();
        for (const auto& [key, value] : satellites) {
            const auto& satellite = value.as_object();
            expectKnownMembers(satellite, {"id", "name", "transmitters"}, "satellite");
            satellites_[std::string(key)] = std::make_shared<Satellite>(
                std::string(satellite.at("name").as_string()), satellite.at("id").as_int64(),
                goldenTransmitters(satellite.at("transmitters")));
        }
        // The tracking timer may fire whenever the clock runs: only a `tick` step has angles.
        app().setTickAngles([this](const Satellite&, Instant) { return angles_; });
    }

    void play(const object& step) {
        expectKnownMembers(
            step,
            {"do", "sat", "tx", "rangeRate", "aheadRangeRate", "value", "hz", "hex", "seconds"},
            "step");
        const std::string_view what = step.at("do").as_string();
        ASSERT_TRUE(playSession(what, step) || playOffsets(what, step) || playServer(what, step))
            << "unknown step " << what;
        world_.machine.loop.runPosted();
    }

    void check(const object& entry) {
        expectKnownMembers(entry, {"sent", "attempts", "cancels", "state", "stored"}, "entry");
        std::vector<std::string> sent;
        for (const auto& line : entry.at("sent").as_array()) sent.emplace_back(line.as_string());
        EXPECT_EQ(world_.takeSent(), sent);

        const auto& connections = world_.machine.tcp.connections;
        const auto cancelled = static_cast<std::int64_t>(std::count_if(
            connections.begin(), connections.end(), [](const auto& c) { return c->cancelled; }));
        const auto made = static_cast<std::int64_t>(connections.size());
        EXPECT_EQ(made - madeBefore_, entry.at("attempts").as_int64()) << "attempts";
        EXPECT_EQ(cancelled - cancelledBefore_, entry.at("cancels").as_int64()) << "cancels";
        madeBefore_ = made;
        cancelledBefore_ = cancelled;

        checkState(entry.at("state").as_object());
        checkStored(entry.at("stored").as_object());
    }

  private:
    AppState& app() { return *world_.app; }

    std::optional<Transmitter> channelOf(const object& step) const {
        if (step.at("tx").is_null()) return std::nullopt;
        return satelliteOf(step)->transmitters.at(
            static_cast<std::size_t>(step.at("tx").as_int64()));
    }
    const SatellitePtr& satelliteOf(const object& step) const {
        return satellites_.at(std::string(step.at("sat").as_string()));
    }

    bool playSession(std::string_view what, const object& step) {
        if (what == "start") {
            app().startTracking(satelliteOf(step), channelOf(step));
        } else if (what == "stop") {
            app().stopTracking();
        } else if (what == "select") {
            app().selectTransmitter(channelOf(step), satelliteOf(step));
        } else if (what == "pattern") {
            app().satProtoRestPattern =
                satProtoRestPatternFrom(step.at("value").as_string()).value();
        } else if (what == "forceClassic") {
            app().forceClassicRigctld = step.at("value").as_bool();
        } else if (what == "tick") {
            tick(step);
        } else {
            return false;
        }
        return true;
    }

    void tick(const object& step) {
        AppState::TickAngles angles;
        angles.now.rangeRate = number(step.at("rangeRate"));
        if (const auto& ahead = step.at("aheadRangeRate"); !ahead.is_null()) {
            angles.ahead.emplace().rangeRate = number(ahead);
        }
        angles_ = angles;
        app().updateTracking();
        angles_.reset();
    }

    bool playOffsets(std::string_view what, const object& step) {
        if (what == "bumpRIT") {
            app().bumpRIT(number(step.at("hz")));
        } else if (what == "bumpOffset") {
            app().bumpPassbandOffset(number(step.at("hz")));
        } else if (what == "bumpCal") {
            app().bumpSatCalibration(number(step.at("hz")));
        } else if (what == "saveCal") {
            app().saveSatCalibration();
        } else if (what == "clearCal") {
            app().clearCalibration();
        } else {
            return false;
        }
        return true;
    }

    bool playServer(std::string_view what, const object& step) {
        static const std::map<std::string_view, TcpState> kStates{
            {"ready", TcpState::ready},
            {"waiting", TcpState::waiting},
            {"failed", TcpState::failed},
            {"cancelled", TcpState::cancelled}};
        if (const auto state = kStates.find(what); state != kStates.end()) {
            world_.machine.tcp.newest().report(state->second);
        } else if (what == "recv") {
            world_.machine.tcp.newest().deliver(fromHex(step.at("hex").as_string()));
        } else if (what == "sendError") {
            world_.machine.tcp.failLatestSend();
        } else if (what == "advance") {
            world_.machine.loop.advance(number(step.at("seconds")));
        } else {
            return false;
        }
        return true;
    }

    static std::string_view modeName(RigProtocolMode mode) {
        if (mode == RigProtocolMode::satProtoV1) return "satProtoV1";
        return mode == RigProtocolMode::classic ? "classic" : "unknown";
    }

    void checkState(const object& state) {
        const std::map<std::string_view, double> numbers{
            {"currentSatCalibration", app().currentSatCalibration},
            {"currentRIT", app().currentRIT},
            {"currentPassbandOffset", app().currentPassbandOffset},
            {"currentDopplerShift", app().currentDopplerShift},
            {"currentCorrectedFreq", app().currentCorrectedFreq},
            {"currentDopplerRate", app().currentDopplerRate},
            {"currentUplinkFreq", app().currentUplinkFreq}};
        const std::map<std::string_view, bool> flags{{"isTracking", app().isTracking},
                                                     {"rigConnected", app().rigConnected},
                                                     {"rigSatProtoArmed", app().rigSatProtoArmed}};
        const std::map<std::string_view, std::string_view> texts{
            {"rigProtocolMode", modeName(app().rigProtocolMode)},
            {"rigSatProtoStatus", app().rigSatProtoStatus.get()},
            {"statusMessage", app().statusMessage.get()}};
        const std::map<std::string_view, std::optional<Transmitter>> channels{
            {"selectedCenterHz", app().selectedTransmitter},
            {"uplinkCenterHz", app().selectedUplinkTransmitter}};
        for (const auto& [key, value] : state) {
            SCOPED_TRACE(std::string(key));
            if (const auto n = numbers.find(key); n != numbers.end()) {
                EXPECT_TRUE(closeTo(n->second, number(value)));
            } else if (const auto f = flags.find(key); f != flags.end()) {
                EXPECT_EQ(f->second, value.as_bool());
            } else if (const auto t = texts.find(key); t != texts.end()) {
                EXPECT_EQ(t->second, std::string_view(value.as_string()));
            } else if (const auto c = channels.find(key); c != channels.end()) {
                ASSERT_EQ(c->second.has_value(), !value.is_null());
                if (c->second) {
                    EXPECT_EQ(c->second->centerFreqHz(), number(value));
                }
            } else {
                ADD_FAILURE() << "nothing checks this field";
            }
        }
    }

    void checkStored(const object& stored) {
        std::map<std::string, double> wanted;
        for (const auto& [key, value] : stored) wanted[std::string(key)] = number(value);
        std::map<std::string, double> actual;
        for (const auto& [key, value] : world_.machine.settings.values) {
            if (key.starts_with("lastTxHz_") || key.starts_with("calOffset_")) {
                actual[key] = world_.machine.settings.number(key);
            }
        }
        EXPECT_EQ(actual, wanted);
    }

    CoreWorld world_;
    std::map<std::string, SatellitePtr> satellites_;
    std::optional<AppState::TickAngles> angles_;
    std::int64_t madeBefore_ = 0;
    std::int64_t cancelledBefore_ = 0;
};

TEST(SessionVectors, EveryStepOfEveryScript) {
    const auto file = loadVectors("data/session.json");
    const auto& satellites = file.at("satellites").as_object();
    forEachCase(file, "session.json", "cases", [&satellites](const object& c) {
        expectKnownMembers(c, {"id", "note", "script", "expected"}, "case");
        SessionPlayer player(satellites);
        const auto& script = c.at("script").as_array();
        const auto& expected = c.at("expected").as_array();
        ASSERT_EQ(script.size(), expected.size());
        for (std::size_t i = 0; i < script.size(); ++i) {
            SCOPED_TRACE("step " + std::to_string(i) + " " + boost::json::serialize(script[i]));
            player.play(script[i].as_object());
            player.check(expected[i].as_object());
        }
    });
}

}  // namespace
}  // namespace veloran::test
