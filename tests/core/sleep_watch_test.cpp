#include "core/sleep_watch.h"

#include <gtest/gtest.h>

#include "support/simulated_machine.h"

namespace veloran::test {
namespace {

TEST(ClockLeapt, OnlyWhereTheClockIsFarFromTheWait) {
    constexpr Instant kThen{817000000.0};
    EXPECT_FALSE(clockLeapt(kThen, kThen + 2, 2));
    EXPECT_FALSE(clockLeapt(kThen, kThen + 5, 2)) << "a beat that was late";
    EXPECT_FALSE(clockLeapt(kThen, kThen - 3, 2)) << "a clock put right";
    EXPECT_TRUE(clockLeapt(kThen, kThen + 1200, 2)) << "a sleep";
    EXPECT_TRUE(clockLeapt(kThen, kThen - 60, 2)) << "a clock set back";
}

class SleepWatchTest : public ::testing::Test {
  protected:
    SimulatedMachine machine;
    int wakes = 0;
    SleepWatch watch{machine.loop, machine.loop, [this] { ++wakes; }};
};

TEST_F(SleepWatchTest, AWakefulHourTellsNothing) {
    machine.loop.advance(3600);
    EXPECT_EQ(wakes, 0);
}

TEST_F(SleepWatchTest, ASleepIsToldOnceAndWithinABeat) {
    machine.loop.advance(60.5);
    machine.loop.jumpClock(1200);
    machine.loop.advance(SleepWatch::kBeatSeconds);
    EXPECT_EQ(wakes, 1);
    machine.loop.advance(3600);
    EXPECT_EQ(wakes, 1);
}

TEST_F(SleepWatchTest, TheDesktopIsBelievedAtOnce) {
    machine.loop.jumpClock(1200);
    watch.wokeUp();
    EXPECT_EQ(wakes, 1);
    machine.loop.advance(60);
    EXPECT_EQ(wakes, 1) << "and the clock says nothing new";
}

TEST_F(SleepWatchTest, ADesktopThatIsLateSaysNothingNew) {
    machine.loop.jumpClock(1200);
    machine.loop.advance(SleepWatch::kBeatSeconds);
    watch.wokeUp();
    EXPECT_EQ(wakes, 1);
}

TEST_F(SleepWatchTest, EachSleepIsTold) {
    for (const double seconds : {1200.0, 30.0, 86400.0, -60.0, -3600.0, 1200.0}) {
        machine.loop.jumpClock(seconds);
        machine.loop.advance(20);
    }
    EXPECT_EQ(wakes, 6);
}

TEST_F(SleepWatchTest, ItsEndEndsTheBeat) {
    const auto before = machine.loop.timerCount();
    {
        const SleepWatch other(machine.loop, machine.loop, [] {});
    }
    EXPECT_EQ(machine.loop.timerCount(), before);
}

}  // namespace
}  // namespace veloran::test
