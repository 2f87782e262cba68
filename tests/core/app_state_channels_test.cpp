// The transmitter service and the channels of the selected bodies.

#include <gmock/gmock.h>

#include "support/core_world.h"

namespace veloran::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string urlOf(std::int64_t id) {
    return fmt::format(
        "https://channels.test/api/transmitters/?format=json&satellite__norad_cat_id={}", id);
}

std::string answerWith(const std::string& description) {
    return fmt::format(R"([{{"description":"{}","alive":true,"downlink_low":435640000}}])",
                       description);
}

class ServiceChannels : public ::testing::Test {
  protected:
    ServiceChannels() {
        world.machine.settings.set("tleCategories", std::vector<std::string>{"amateur"});
        world.cacheGroup("amateur", ommGroup({{"ISS (ZARYA)", 25544}, {"RS-44", 44909}, {"X", 5}}));
        select({25544});
    }
    void select(std::vector<std::int64_t> ids) {
        world.machine.settings.set("selectedSatIds", std::move(ids));
    }
    void load() {
        if (!world.app) world.start(config());
        world.load();
    }
    static AppConfig config() {
        AppConfig config;
        config.transmitterServiceBase = "https://channels.test";
        return config;
    }
    std::vector<std::string> channelsOf(std::int64_t id) const {
        std::vector<std::string> result;
        for (const auto& channel : world.body(id)->transmitters) {
            result.push_back(channel.description);
        }
        return result;
    }
    ScriptedHttp& http() { return world.machine.http; }

    CoreWorld world;
    const std::vector<std::string> builtin{"Voice repeater DL", "APRS"};
};

TEST_F(ServiceChannels, LoadAsksOnceForEachSelectedBodyInOrder) {
    select({5, 44909, -1});
    load();
    EXPECT_THAT(http().requests, ElementsAre(urlOf(44909), urlOf(-1), urlOf(5)))
        << "the list is sorted by name";
}

TEST_F(ServiceChannels, AnswerReplacesTheLocalChannelsWholly) {
    http().answers[urlOf(25544)].body = answerWith("new");
    load();
    EXPECT_THAT(channelsOf(25544), ElementsAre("new"));
    ASSERT_EQ(world.app->transmitterDB().at(25544).size(), 1u);
    EXPECT_EQ(world.app->transmitterDB().at(25544)[0], world.body(25544)->transmitters[0]);
}

TEST_F(ServiceChannels, ChangeOfChannelsIsTold) {
    http().answers[urlOf(25544)] = {answerWith("new"), 10};
    load();
    world.machine.loop.advance(9);
    std::size_t told = 0;
    const auto watching = world.app->objectWillChange.subscribe([&] { ++told; });
    world.machine.loop.advance(2);
    EXPECT_EQ(told, 1u);
}

TEST_F(ServiceChannels, FreshCacheServesWithoutARequest) {
    http().answers[urlOf(25544)].body = answerWith("new");
    load();
    http().requests.clear();
    world.app.reset();
    load();
    EXPECT_THAT(http().requests, IsEmpty());
    EXPECT_THAT(channelsOf(25544), ElementsAre("new"));
}

TEST_F(ServiceChannels, WithoutAnswerAndCacheTheBuiltinListStays) {
    for (const auto& body : {std::optional<std::string>(), std::optional<std::string>("[]"),
                             std::optional<std::string>("<html>")}) {
        http().answers[urlOf(25544)].body = body;
        load();
        EXPECT_EQ(channelsOf(25544), builtin) << body.value_or("no answer");
    }
}

TEST_F(ServiceChannels, ChosenChannelIsLeftAlone) {
    http().answers[urlOf(25544)] = {answerWith("new"), 10};
    load();
    const auto chosen = world.body(25544)->transmitters.at(1);
    world.app->selectTransmitter(chosen, world.body(25544));
    world.machine.loop.advance(20);
    EXPECT_THAT(channelsOf(25544), ElementsAre("new"));
    EXPECT_EQ(world.app->selectedTransmitter.get(), chosen);
}

TEST_F(ServiceChannels, AnswerForABodyThatHasGoneIsDropped) {
    select({44909, 5});
    http().answers[urlOf(44909)] = {answerWith("late"), 30};
    load();
    world.cacheGroup("amateur", ommGroup({{"X", 5}}));
    world.load();
    ASSERT_EQ(world.body(44909), nullptr);
    const auto before = world.app->transmitterDB();
    world.machine.loop.advance(60);
    EXPECT_TRUE(world.app->transmitterDB() == before);
}

TEST_F(ServiceChannels, AnswerReachesTheBodyThatAReloadHasMadeAnew) {
    http().answers[urlOf(25544)] = {answerWith("late"), 30};
    load();
    const auto before = world.body(25544);
    http().answers[urlOf(25544)] = {std::nullopt};
    world.load();
    ASSERT_NE(world.body(25544), before);
    world.machine.loop.advance(60);
    EXPECT_THAT(channelsOf(25544), ElementsAre("late"));
    EXPECT_EQ(before->transmitters.size(), builtin.size());
}

TEST_F(ServiceChannels, AnswerForABodyDeselectedMeanwhileIsTaken) {
    http().answers[urlOf(25544)] = {answerWith("late"), 30};
    load();
    world.app->toggleSatellite(world.body(25544));
    world.machine.loop.advance(60);
    EXPECT_THAT(channelsOf(25544), ElementsAre("late"));
}

TEST_F(ServiceChannels, BodyTickedForTheFirstTimeGetsItsChannelsAtOnce) {
    http().answers[urlOf(44909)] = {answerWith("new"), 1};
    load();
    http().requests.clear();
    world.app->toggleSatellite(world.body(44909));
    world.machine.loop.advance(2);
    EXPECT_THAT(http().requests, ElementsAre(urlOf(44909)));
    EXPECT_THAT(channelsOf(44909), ElementsAre("new"));
    EXPECT_TRUE(world.machine.files.files.contains("/home/test/.veloran/satnogs/44909.json"));
    world.machine.files.files.clear();
    for (int i = 0; i < 2; ++i) world.app->toggleSatellite(world.body(44909));
    world.machine.loop.advance(2);
    EXPECT_EQ(http().requests.size(), 1u) << "once is enough, with the cache gone too";
}

TEST_F(ServiceChannels, TickedBodyIsServedFromItsCache) {
    world.machine.files.files["/home/test/.veloran/satnogs/44909.json"] =
        encodeTransmitters({channel(435.64e6)});
    world.machine.files.files["/home/test/.veloran/satnogs/44909.timestamp"] =
        fmt::format("{}", world.machine.loop.now().unixSeconds());
    load();
    http().requests.clear();
    world.app->toggleSatellite(world.body(44909));
    world.machine.loop.runPosted();
    EXPECT_THAT(http().requests, IsEmpty());
    ASSERT_EQ(world.body(44909)->transmitters.size(), 1u);
    EXPECT_EQ(world.body(44909)->transmitters[0].freq, 435.64e6);
}

TEST_F(ServiceChannels, ManyTickedAtOnceAskFourAtATime) {
    constexpr std::int64_t kMany = 20;
    std::string group = "[";
    for (std::int64_t id = 1; id <= kMany; ++id) {
        group += (id > 1 ? "," : "") + ommRecord(fmt::format("S{:02}", id), 1000 + id);
        http().answers[urlOf(1000 + id)] = {answerWith("new"), 1};
    }
    world.cacheGroup("amateur", group + "]");
    select({});
    load();
    http().requests.clear();
    world.app->toggleSatellites(world.app->satellites);  // the Sun and the Moon too
    for (std::size_t asked = 4; asked <= kMany; asked += 4) {
        world.machine.loop.advance(asked == 4 ? 0.5 : 1);
        EXPECT_EQ(http().requests.size(), asked);
    }
    world.machine.loop.advance(5);
    EXPECT_EQ(http().requests.size(), static_cast<std::size_t>(kMany));
    EXPECT_THAT(channelsOf(1001), ElementsAre("new"));
    EXPECT_THAT(channelsOf(1000 + kMany), ElementsAre("new"));
}

TEST_F(ServiceChannels, BodyThatIsUntickedOrHasNoChannelsIsNotAskedFor) {
    load();
    http().requests.clear();
    world.app->toggleSatellite(world.body(25544));
    world.app->toggleSatellite(world.body(-1));
    world.machine.loop.advance(2);
    EXPECT_THAT(http().requests, IsEmpty());
}

TEST_F(ServiceChannels, TickedBodyWithoutAnswerIsAskedForAtTheNextTick) {
    load();
    http().requests.clear();
    for (int i = 0; i < 3; ++i) {
        world.app->toggleSatellite(world.body(44909));
        world.machine.loop.advance(2);
    }
    EXPECT_THAT(http().requests, ElementsAre(urlOf(44909), urlOf(44909)));
}

TEST_F(ServiceChannels, AnswersOfOneBodyLeaveTheOthersAlone) {
    select({25544, 44909});
    http().answers[urlOf(44909)] = {answerWith("first"), 1};
    http().answers[urlOf(25544)] = {answerWith("second"), 2};
    load();
    world.machine.loop.advance(1.5);
    EXPECT_THAT(channelsOf(44909), ElementsAre("first"));
    EXPECT_EQ(channelsOf(25544), builtin);
    world.machine.loop.advance(1);
    EXPECT_THAT(channelsOf(25544), ElementsAre("second"));
    EXPECT_THAT(channelsOf(5), IsEmpty());
}

TEST_F(ServiceChannels, AnswerAfterTheStateHasGoneIsCachedAndNothingElse) {
    http().answers[urlOf(25544)] = {answerWith("late"), 30};
    load();
    world.app.reset();
    world.machine.loop.advance(60);
    EXPECT_TRUE(world.machine.files.files.contains("/home/test/.veloran/satnogs/25544.json"));
    EXPECT_EQ(world.machine.loop.timerCount(), 0u);
}

}  // namespace
}  // namespace veloran::test
