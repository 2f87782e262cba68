#include "ui/timeline/timeline_gestures.h"

#include <gtest/gtest.h>

#include <limits>

namespace veloran {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(TimelineZoom, StopsAtTwoAndFortyEightHours) {
    EXPECT_EQ(zoomIn(2), 2);
    EXPECT_EQ(zoomIn(2.5), 2);
    EXPECT_EQ(zoomOut(48), 48);
    EXPECT_EQ(zoomOut(47.5), 48);
    EXPECT_EQ(zoomIn(12), 11);
    EXPECT_EQ(zoomOut(12), 13);
    EXPECT_EQ(zoomIn(0.01), 2) << "a span from the settings may lie outside";
    EXPECT_EQ(zoomIn(8784), 48);
}

TEST(TimelineZoom, PinchStartsFromTwelveHours) {
    EXPECT_EQ(pinchHours(1), 12);
    EXPECT_EQ(pinchHours(2), 6);
    EXPECT_EQ(pinchHours(100), 2);
    EXPECT_EQ(pinchHours(0.01), 48);
}

TEST(TimelineDrag, ContentFollowsThePointer) {
    // 1000 points show 10 hours: 100 points are an hour.
    EXPECT_EQ(draggedStart(Instant{50000}, 100, 10, 1000), Instant{50000 - 3600});
    EXPECT_EQ(draggedStart(Instant{50000}, -50, 10, 1000), Instant{50000 + 1800});
    EXPECT_EQ(draggedStart(Instant{50000}, 100, 10, 0), Instant{50000}) << "no width yet";
}

TEST(TimelineDrag, NowGoesAQuarterIn) {
    EXPECT_EQ(startAroundNow(Instant{100000}, 12), Instant{100000 - 3 * 3600});
}

TEST(DragGesture, BeginsAfterFivePointsAndTellsTheWholeWay) {
    DragGesture drag;
    drag.press({10, 10});
    EXPECT_EQ(drag.move({14.9, 10}), std::nullopt);
    EXPECT_EQ(drag.move({15, 10}), 5);
    EXPECT_EQ(drag.move({11, 10}), 1) << "back near the start it still is a drag";
    EXPECT_FALSE(drag.release()) << "and no tap";
}

TEST(DragGesture, UpAndDownCountsAsDistance) {
    DragGesture drag;
    drag.press({10, 10});
    EXPECT_EQ(drag.move({13, 14}), 3);
}

TEST(DragGesture, PressWithoutMovingFarIsATap) {
    DragGesture drag;
    drag.press({10, 10});
    drag.move({12, 12});
    EXPECT_TRUE(drag.release());
    EXPECT_FALSE(drag.release()) << "once";
}

TEST(DragGesture, CancelledPressIsNothing) {
    DragGesture drag;
    drag.press({10, 10});
    drag.cancel();
    EXPECT_EQ(drag.move({100, 10}), std::nullopt);
    EXPECT_FALSE(drag.release());
}

TEST(WheelSteps, ThreeMakeAStepAndTheRestIsForgotten) {
    WheelSteps wheel;
    EXPECT_EQ(wheel.add(2.9), 0);
    EXPECT_EQ(wheel.add(5), 1) << "one step, however far";
    EXPECT_EQ(wheel.add(2.9), 0) << "from zero again";
    EXPECT_EQ(wheel.add(-5.9), -1);
    EXPECT_EQ(wheel.add(3), 1);
    EXPECT_EQ(wheel.add(-3), -1);
}

TEST(WheelSteps, TurningBackTakesAway) {
    WheelSteps wheel;
    EXPECT_EQ(wheel.add(2), 0);
    EXPECT_EQ(wheel.add(-2), 0);
    EXPECT_EQ(wheel.add(2), 0);
}

TEST(PinchGesture, AddsIncrementsUpAndStartsBeyondAHundredth) {
    PinchGesture pinch;
    pinch.begin();
    EXPECT_EQ(pinch.grow(0.005), std::nullopt);
    const auto grown = pinch.grow(0.495);
    ASSERT_TRUE(grown);
    EXPECT_DOUBLE_EQ(*grown, 1.5);
    EXPECT_TRUE(pinch.grow(-0.499)) << "it has begun";
    pinch.begin();
    EXPECT_EQ(pinch.grow(0.001), std::nullopt) << "a new one";
}

TEST(PinchGesture, ClosingBeyondAnySpanStaysTheLongest) {
    PinchGesture pinch;
    const auto closed = pinch.grow(-3);
    ASSERT_TRUE(closed);
    EXPECT_EQ(pinchHours(*closed), 48);
}

TEST(PinchGesture, NumbersThatAreNoneChangeNothing) {
    PinchGesture pinch;
    EXPECT_EQ(pinch.grow(kNone), std::nullopt);
    EXPECT_EQ(pinch.become(kInfinity), std::nullopt);
    EXPECT_EQ(pinch.become(2), 2);
}

}  // namespace
}  // namespace veloran
