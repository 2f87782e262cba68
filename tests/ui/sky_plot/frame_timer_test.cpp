#include "ui/sky_plot/frame_timer.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <QWidget>
#include <limits>

#include "support/simulated_machine.h"
#include "ui/patience.h"

namespace veloran {
namespace {

TEST(FrameInterval, FollowsTheDisplayWithinBounds) {
    EXPECT_EQ(frameMilliseconds(60), 16);
    EXPECT_EQ(frameMilliseconds(75), 13);
    EXPECT_EQ(frameMilliseconds(240), 8);
    EXPECT_EQ(frameMilliseconds(24), 33);
}

TEST(FrameInterval, SixtyAFrameWhereTheDisplayTellsNothing) {
    EXPECT_EQ(frameMilliseconds(0), 16);
    EXPECT_EQ(frameMilliseconds(-1), 16);
    EXPECT_EQ(frameMilliseconds(std::numeric_limits<double>::quiet_NaN()), 16);
    EXPECT_EQ(frameMilliseconds(std::numeric_limits<double>::infinity()), 16);
}

class FrameTimerTest : public ::testing::Test {
  protected:
    void SetUp() override {
        EXPECT_FALSE(timer->isRunning()) << "never shown";
        window.resize(100, 100);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, test::kPatienceMs));
    }

    test::SimulatedLoop loop{Instant{0}};
    QWidget window;
    QWidget* widget = new QWidget(&window);
    FrameTimer* timer = new FrameTimer(loop, widget);
};

TEST_F(FrameTimerTest, FiresWhileTheWidgetIsSeen) {
    EXPECT_TRUE(timer->isRunning());
    EXPECT_EQ(timer->interval(), frameMilliseconds(widget->screen()->refreshRate()));
    QSignalSpy frames(timer, &FrameTimer::frame);
    loop.advance((10 * timer->interval() + 1) / 1000.0);
    EXPECT_EQ(frames.count(), 10);
}

TEST_F(FrameTimerTest, StandsWhileTheWidgetIsHidden) {
    widget->hide();
    EXPECT_FALSE(timer->isRunning());
    widget->show();
    EXPECT_TRUE(timer->isRunning());
}

TEST_F(FrameTimerTest, StandsWhileTheWindowIsHidden) {
    window.hide();
    EXPECT_FALSE(timer->isRunning());
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, test::kPatienceMs));
    EXPECT_TRUE(timer->isRunning());
}

TEST_F(FrameTimerTest, StandsWhileTheWindowIsMinimised) {
    window.showMinimized();
    EXPECT_FALSE(timer->isRunning());
    window.showNormal();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, test::kPatienceMs));
    EXPECT_TRUE(timer->isRunning());
}

TEST_F(FrameTimerTest, FollowsTheWidgetIntoAnotherWindow) {
    QWidget other;
    widget->setParent(&other);
    widget->show();
    EXPECT_FALSE(timer->isRunning());
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other, test::kPatienceMs));
    EXPECT_TRUE(timer->isRunning());
    window.hide();
    EXPECT_TRUE(timer->isRunning()) << "the window of before no longer counts";
    widget->setParent(&window);
}

}  // namespace
}  // namespace veloran
