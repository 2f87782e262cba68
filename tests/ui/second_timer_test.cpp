#include "ui/second_timer.h"

#include <gtest/gtest.h>

#include "support/simulated_machine.h"

namespace veloran::test {
namespace {

class SecondTimerTest : public ::testing::Test {
  protected:
    void SetUp() override {
        QObject::connect(&timer, &LoopTimer::timeout, &timer,
                         [this] { beats.push_back(loop.now() - start); });
    }

    const Instant start{817000000.0};
    SimulatedLoop loop{start};
    SecondTimer timer{loop, loop};
    std::vector<double> beats;
};

TEST_F(SecondTimerTest, BeatsEverySecondWhileStarted) {
    loop.advance(2);
    EXPECT_TRUE(beats.empty());
    timer.start();
    loop.advance(3.5);
    ASSERT_EQ(beats.size(), 3u);
    EXPECT_NEAR(beats[2], 5, 1e-6);
    timer.stop();
    loop.advance(3);
    EXPECT_EQ(beats.size(), 3u);
}

TEST_F(SecondTimerTest, MovesBehindATickOnce) {
    timer.start();
    // A beat after a second would come 10 ms behind a tick, that is 20 ms before the next one.
    EXPECT_TRUE(timer.moveBehindTick(0.03));
    EXPECT_FALSE(timer.moveBehindTick(0.03)) << "a beat may not be put off for ever";
    loop.advance(1.5);
    ASSERT_EQ(beats.size(), 1u);
    EXPECT_NEAR(beats[0], 1.002, 1e-6);
    EXPECT_FALSE(timer.moveBehindTick(0.03)) << "within ten seconds";
    loop.advance(9);
    EXPECT_TRUE(timer.moveBehindTick(0.03));
}

TEST_F(SecondTimerTest, ClockSetBackDoesNotHoldUpTheNextMove) {
    timer.start();
    EXPECT_TRUE(timer.moveBehindTick(0.03));
    loop.jumpClock(-3600);
    EXPECT_TRUE(timer.moveBehindTick(0.03));
}

TEST_F(SecondTimerTest, StaysWhereTheBeatIsBehindATick) {
    timer.start();
    loop.advance(0.198);  // the next beat comes in 802 ms, 2 ms behind the eighth tick
    EXPECT_FALSE(timer.moveBehindTick(0.1));
}

TEST_F(SecondTimerTest, StaysWithoutBeatsAndBetweenTicksTooClose) {
    EXPECT_FALSE(timer.moveBehindTick(0.03));
    timer.start();
    EXPECT_FALSE(timer.moveBehindTick(0.007));
}

TEST_F(SecondTimerTest, StopHoldsAMoveThatIsOnItsWay) {
    timer.start();
    EXPECT_TRUE(timer.moveBehindTick(0.03));
    timer.stop();
    loop.advance(5);
    EXPECT_FALSE(timer.isActive());
    EXPECT_TRUE(beats.empty());
}

TEST(LoopTimer, SingleOneFiresOnceAfterItsLastStart) {
    SimulatedLoop loop{Instant{0}};
    LoopTimer timer(loop, 0.2, LoopTimer::Kind::single);
    int fired = 0;
    QObject::connect(&timer, &LoopTimer::timeout, &timer, [&] { ++fired; });
    timer.start();
    loop.advance(0.1);
    timer.start();
    loop.advance(0.15);
    EXPECT_EQ(fired, 0);
    EXPECT_TRUE(timer.isActive());
    loop.advance(0.1);
    EXPECT_EQ(fired, 1);
    EXPECT_FALSE(timer.isActive());
    loop.advance(5);
    EXPECT_EQ(fired, 1);
}

}  // namespace
}  // namespace veloran::test
