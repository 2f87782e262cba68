#include "ui/state_refresher.h"

#include <gtest/gtest.h>

#include <QTest>
#include <memory>
#include <vector>

#include "base/published.h"
#include "support/simulated_machine.h"

namespace veloran {
namespace {

using test::SimulatedLoop;

class StateRefresherTest : public ::testing::Test {
  protected:
    StateRefresherTest() {
        QObject::connect(refresher.get(), &StateRefresher::refresh, refresher.get(), [this] {
            moments.push_back(loop.elapsed());
            if (isChangedByRefresh) changes.send();
        });
    }
    /// Lets the events run that wait.
    static void turn() { QTest::qWait(0); }
    void letFramesPass(double frames) { loop.advance(frames * StateRefresher::kFrameSeconds); }

    SimulatedLoop loop{Instant{0}};
    ChangeNotifier changes;
    std::unique_ptr<StateRefresher> refresher = std::make_unique<StateRefresher>(changes, loop);
    std::vector<double> moments;  // of refreshes
    bool isChangedByRefresh = false;
};

TEST_F(StateRefresherTest, ManyChangesOfOneTurnGiveOneRefreshWithTheNewValues) {
    Published<int> value{changes};
    std::vector<int> read;
    QObject::connect(refresher.get(), &StateRefresher::refresh, [&] { read.push_back(value); });
    for (int i = 1; i <= 5; ++i) value = i;
    EXPECT_TRUE(read.empty()) << "nothing reads inside the notification";
    turn();
    EXPECT_EQ(read, std::vector{5}) << "without a wait";
    letFramesPass(3);
    EXPECT_EQ(moments.size(), 1U);
}

TEST_F(StateRefresherTest, RefreshesAreAFrameApart) {
    isChangedByRefresh = true;
    changes.send();
    turn();
    letFramesPass(4.5);
    ASSERT_EQ(moments.size(), 5U);
    for (std::size_t i = 0; i < moments.size(); ++i) {
        EXPECT_NEAR(moments[i], static_cast<double>(i) * StateRefresher::kFrameSeconds, 1e-9);
    }
}

TEST_F(StateRefresherTest, ChangeWithinAFrameWaitsForItsEnd) {
    changes.send();
    turn();
    letFramesPass(0.5);
    changes.send();
    turn();
    EXPECT_EQ(moments.size(), 1U);
    letFramesPass(0.6);
    EXPECT_EQ(moments.size(), 2U);
    letFramesPass(1.1);
    changes.send();
    turn();
    EXPECT_EQ(moments.size(), 3U) << "at once after a frame of rest";
}

TEST_F(StateRefresherTest, EndsWithItsOwner) {
    changes.send();
    refresher.reset();
    changes.send();
    turn();
    letFramesPass(2);
    EXPECT_TRUE(moments.empty());
    EXPECT_EQ(loop.timerCount(), 0U);
}

}  // namespace
}  // namespace veloran
