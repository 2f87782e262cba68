// Tracking against the simulated radio: the SAT_PROTO v1 dialect, and the ways a server can say
// that it does not speak it.

#include <gmock/gmock.h>

#include <ostream>
#include <string>
#include <vector>

#include "scenarios/real_station.h"
#include "servers/simulated_radio.h"

namespace veloran {
namespace {

using test::spinUntil;
using test::Station;
using testing::ElementsAre;
using testing::StartsWith;

class SatProtoStory : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(radio.start());
        ASSERT_NO_FATAL_FAILURE(station.load());
    }
    AppState& state() { return *station.state(); }
    std::size_t count(std::string_view command) { return radio.received(command).size(); }
    bool waitForMore(std::string_view command, std::size_t howMany) {
        return spinUntil(
            [&, target = count(command) + howMany] { return count(command) >= target; });
    }

    SimulatedRadio radio;
    Station station;
};

TEST_F(SatProtoStory, ArmsThenSendsDownlinkAndUplinkInTurnThenDisarms) {
    ASSERT_NO_FATAL_FAILURE(station.track(radio.port(), 50));
    ASSERT_TRUE(waitForMore("\\sat_ul", 60));
    EXPECT_EQ(state().rigProtocolMode.get(), RigProtocolMode::satProtoV1);
    EXPECT_TRUE(state().rigSatProtoArmed.get());
    EXPECT_TRUE(radio.radio().isArmed());
    EXPECT_EQ(radio.radio().armedName(), "RS-44_(DOSAAF-85)");
    EXPECT_EQ(radio.radio().downlink()->restHz, 435640000);
    EXPECT_EQ(radio.radio().uplink()->restHz, 145965000);
    EXPECT_TRUE(radio.radio().downlink()->rateHzS.has_value());

    const auto extension = radio.received("\\");
    ASSERT_GE(extension.size(), 62u);
    EXPECT_EQ(extension[0], "\\sat_caps");
    EXPECT_THAT(extension[1], StartsWith("\\sat_aos "));
    for (std::size_t i = 2; i < extension.size(); ++i) {
        EXPECT_THAT(extension[i], StartsWith(i % 2 == 0 ? "\\sat_dl " : "\\sat_ul ")) << i;
    }

    state().stopTracking();
    ASSERT_TRUE(spinUntil([&] { return !radio.radio().isArmed(); }));
    ASSERT_TRUE(spinUntil([&] { return !state().rigSatProtoArmed.get(); }));
    EXPECT_EQ(radio.received("\\").back(), "\\sat_los");
    EXPECT_TRUE(state().rigConnected.get()) << "the connection stays";
}

TEST_F(SatProtoStory, StolenRadioIsArmedAnew) {
    ASSERT_NO_FATAL_FAILURE(station.track(radio.port(), 50));
    ASSERT_TRUE(waitForMore("\\sat_dl", 5));
    EXPECT_EQ(state().rigSatProtoStatus.get(), "");
    radio.steal();
    // The downlink and the uplink of the same tick may both be refused, and each arms again.
    ASSERT_TRUE(spinUntil([&] { return count("\\sat_aos") >= 2 && radio.radio().isArmed(); }));
    EXPECT_EQ(state().rigSatProtoStatus.get(), "Re-armed (radio was claimed by another client)");
    ASSERT_TRUE(waitForMore("\\sat_dl", 5));
    EXPECT_TRUE(state().rigSatProtoArmed.get());
}

TEST_F(SatProtoStory, RefusedUplinkEndsForGoodWhileTheDownlinkGoesOn) {
    radio.refuseUplink();
    ASSERT_NO_FATAL_FAILURE(station.track(radio.port(), 50));
    ASSERT_TRUE(spinUntil(
        [&] { return state().rigClient() != nullptr && state().rigClient()->ulUnsupported(); }));
    radio.refuseUplink(false);
    const auto uplinks = count("\\sat_ul");
    ASSERT_TRUE(waitForMore("\\sat_dl", 20));
    EXPECT_EQ(count("\\sat_ul"), uplinks);

    radio.closeAll();
    ASSERT_TRUE(waitForMore("\\sat_aos", 1)) << "connects and arms again by itself";
    ASSERT_TRUE(waitForMore("\\sat_dl", 20));
    EXPECT_EQ(count("\\sat_ul"), uplinks) << "also after a new connection";
}

TEST_F(SatProtoStory, RadioThatComesBackOnItsPortIsArmedAgain) {
    ASSERT_NO_FATAL_FAILURE(station.track(radio.port(), 50));
    ASSERT_TRUE(waitForMore("\\sat_dl", 5));
    radio.stop();
    ASSERT_TRUE(spinUntil([&] { return !state().rigConnected.get(); }));
    EXPECT_EQ(state().rigProtocolMode.get() == RigProtocolMode::satProtoV1, false);
    ASSERT_TRUE(radio.start(radio.port()));
    ASSERT_TRUE(waitForMore("\\sat_dl", 5));
    EXPECT_TRUE(radio.radio().isArmed());
}

struct ClassicCase {
    const char* name;
    CapsAnswer answer;

    friend void PrintTo(const ClassicCase& shown, std::ostream* out) { *out << shown.name; }
};

class ClassicAnswers : public testing::TestWithParam<ClassicCase> {};

TEST_P(ClassicAnswers, EndInTheClassicDialectAndAWorkingRadio) {
    SimulatedRadio radio(GetParam().answer);
    ASSERT_TRUE(radio.start());
    Station station;
    ASSERT_NO_FATAL_FAILURE(station.load());
    ASSERT_NO_FATAL_FAILURE(station.track(radio.port()));
    ASSERT_TRUE(spinUntil(
        [&] { return station.state()->rigProtocolMode.get() == RigProtocolMode::classic; }));

    const auto tuned = radio.received("F ").size();
    ASSERT_TRUE(spinUntil([&] { return radio.received("F ").size() >= tuned + 10; }));
    station.state()->stopTracking();
    const auto last = static_cast<std::int64_t>(station.state()->currentCorrectedFreq.get());
    EXPECT_TRUE(spinUntil([&] { return radio.radio().frequency() == last; }));
    EXPECT_THAT(radio.received("\\"), ElementsAre("\\sat_caps"));
    EXPECT_TRUE(station.state()->rigConnected.get());
}

INSTANTIATE_TEST_SUITE_P(Probe, ClassicAnswers,
                         testing::Values(ClassicCase{"Nothing", CapsAnswer::nothing},
                                         ClassicCase{"MinusOne", CapsAnswer::invalidParam},
                                         ClassicCase{"MinusFour", CapsAnswer::notImplemented},
                                         ClassicCase{"One", CapsAnswer::positiveCode},
                                         ClassicCase{"PlainText", CapsAnswer::plainText}),
                         [](const auto& shown) { return shown.param.name; });

}  // namespace
}  // namespace veloran
