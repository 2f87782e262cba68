#include "core/unattended.h"

#include <gmock/gmock.h>

#include "core/sleep_watch.h"
#include "support/queue_world.h"

namespace veloran::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kLength = 600;

class UnattendedState : public ::testing::Test {
  protected:
    UnattendedState() {
        world.start();
        app().dopplerUpdateHz = 1.0;
        body = world.add(1, "A", {passFrom(rise(), kLength), passFrom(rise() + 6000, kLength)});
    }
    AppState& app() { return *world.app; }
    Duty duty() { return dutyOf(app()); }
    Instant rise() const { return start + 100; }
    void queue(std::size_t pass) {
        const auto passes = body->passes;
        app().togglePassQueued(body, passes->at(pass));
    }
    /// The machine sleeps, and its watch finds out.
    void sleep(double seconds) {
        world.machine.loop.jumpClock(seconds);
        world.machine.loop.advance(SleepWatch::kBeatSeconds);
    }

    QueueWorld world;
    const Instant start = world.machine.loop.now();
    SatellitePtr body;
};

TEST_F(UnattendedState, DutyFollowsSessionAndQueue) {
    EXPECT_FALSE(duty().isAny());
    queue(0);
    queue(1);
    EXPECT_EQ(duty().passesAhead, 2U);
    EXPECT_EQ(duty().next->riseTime, rise());
    world.runUntil(rise() + 5);
    EXPECT_EQ(duty().session, (Duty::Session{"A", rise() + kLength}));
    EXPECT_EQ(duty().passesAhead, 1U);
    world.runUntil(rise() + 7000);
    EXPECT_FALSE(duty().isAny()) << "the entries stay, and bind nobody";
    EXPECT_EQ(app().queuedPassIds->size(), 2U);
}

TEST_F(UnattendedState, DutyOfASessionByHandHasNoEnd) {
    app().startTracking(body, std::nullopt);
    EXPECT_EQ(duty().session, (Duty::Session{"A", std::nullopt}));
}

TEST_F(UnattendedState, StopForGoodKeepsTheQueueFromStartingItAgain) {
    queue(0);
    queue(1);
    world.runUntil(rise() + 5);
    ASSERT_TRUE(app().isTracking);
    stopForGood(app());
    world.runUntil(rise() + 60);
    EXPECT_FALSE(app().isTracking);
    EXPECT_EQ(app().queuedPassIds->size(), 1U) << "the later pass stays";
    world.runUntil(rise() + 6010);
    EXPECT_TRUE(app().isTracking);
    stopForGood(app());
    EXPECT_EQ(world.machine.loop.timerCount(), 0U) << "an empty queue has no timer";
}

TEST_F(UnattendedState, AfterASleepPassesAreSearchedAtOnce) {
    const SleepWatch watch(world.machine.loop, world.machine.loop,
                           [this] { goOnAfterSleep(app()); });
    world.cacheGroup("amateur", ommGroup({{"ISS", 25544}}));
    world.cacheGroup("stations", "[]");
    app().selectedSatelliteIds = std::set<std::int64_t>{25544};
    world.load();
    const auto iss = world.body(25544);
    const auto before = iss->passes;
    ASSERT_FALSE(before->empty());
    sleep(20 * 3600);
    EXPECT_NE(iss->passes, before);
    ASSERT_FALSE(iss->passes->empty());
    EXPECT_GT(iss->passes->back().riseTime, before->back().riseTime + 15 * 3600);
}

TEST_F(UnattendedState, AfterASleepTheQueueGoesOnWithThePassThatIsUnderWay) {
    queue(0);
    queue(1);
    sleep(6300);
    EXPECT_EQ(duty().session, (Duty::Session{"A", rise() + 6000 + kLength}));
    world.runUntil(rise() + 6000 + kLength + 1);
    EXPECT_FALSE(app().isTracking);
}

TEST_F(UnattendedState, AfterASleepAnIdleConnectionIsTried) {
    world.trackArmed(body, body->transmitters.front());
    app().stopTracking();
    world.machine.loop.runPosted();
    world.serverSays("RPRT 0\n");
    world.takeSent();
    goOnAfterSleep(app());
    EXPECT_THAT(world.takeSent(), ElementsAre("f\n"));
    EXPECT_EQ(world.machine.tcp.connections.size(), 1U);

    world.machine.tcp.failLatestSend();
    world.machine.loop.runPosted();
    EXPECT_FALSE(app().rigConnected) << "and its end is known before the next pass";
}

TEST_F(UnattendedState, AfterASleepAnArmedSessionTriesItByItsUpdate) {
    world.setRangeRates(1, 1);
    world.trackArmed(body, body->transmitters.front());
    goOnAfterSleep(app());
    const auto sent = world.takeSent();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_TRUE(sent.front().starts_with("\\sat_dl ")) << sent.front();
}

TEST_F(UnattendedState, WithoutARadioASleepSendsNothing) {
    goOnAfterSleep(app());
    world.machine.loop.runPosted();
    EXPECT_TRUE(world.machine.tcp.connections.empty());
}

}  // namespace
}  // namespace veloran::test
