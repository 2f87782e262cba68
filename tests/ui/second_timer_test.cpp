#include "ui/second_timer.h"

#include <gtest/gtest.h>

namespace veloran {
namespace {

TEST(SecondTimer, MovesBehindATickOnce) {
    SecondTimer timer;
    timer.start();
    // A beat in 1000 ms would come 10 ms behind a tick, that is 20 ms before the next one.
    EXPECT_TRUE(timer.moveBehindTick(30));
    EXPECT_FALSE(timer.moveBehindTick(30)) << "a beat may not be put off for ever";
}

TEST(SecondTimer, StaysWhereTheBeatIsBehindATick) {
    SecondTimer timer;
    timer.setInterval(1003);
    timer.start();
    EXPECT_FALSE(timer.moveBehindTick(100));
}

TEST(SecondTimer, StaysWithoutBeatsAndBetweenTicksTooClose) {
    SecondTimer timer;
    EXPECT_FALSE(timer.moveBehindTick(30));
    timer.start();
    EXPECT_FALSE(timer.moveBehindTick(7));
}

}  // namespace
}  // namespace veloran
