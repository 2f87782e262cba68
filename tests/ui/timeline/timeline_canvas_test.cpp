#include "ui/timeline/timeline_canvas.h"

#include <QApplication>
#include <QGestureEvent>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QPointingDevice>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QWindow>

#include "../ui_fixture.h"
#include "ui/theme.h"
#include "ui/timeline/wheel_monitor.h"

namespace veloran::test {
namespace {

constexpr double kHour = 3600;

/// Counts the events of a kind that reach an object.
class EventCounter : public QObject {
  public:
    EventCounter(QObject& watched, QEvent::Type type) : type_(type) {
        watched.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == type_) ++count;
        return false;
    }
    int count = 0;

  private:
    QEvent::Type type_;
};

/// A canvas of 1000 x 224 points at the top of a window: the frame of ten hours has 100 points an
/// hour and two a degree.
class TimelineCanvasTest : public UiFixture {
  protected:
    void SetUp() override {
        state->timelineStartTime = start;
        state->timelineHoursVisible = 10;
        high =
            addSatellite("HIGH", 1, {passAt(start + kHour, kHour, 80)}, {channel("down", 145.8e6)});
        low = addSatellite("LOW", 2, {passAt(start + 1.5 * kHour, kHour, 30)});
        canvas.setPasses(passesByElevation(state->selectedSatellites()));
        canvas.refresh();
        canvas.setFixedSize(1000, 224);
        auto* column = new QVBoxLayout(&window);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(0);
        column->addWidget(&canvas);
        column->addWidget(&below, 1);
        window.resize(1000, 400);
        window.show();
        QTest::qWait(0);
    }
    void TearDown() override {
        canvas.setParent(nullptr);
        below.setParent(nullptr);
    }

    void turnWheel(QPoint at, QPoint pixels, QPoint units) {
        const QPointF local(at);
        QWheelEvent event(local, window.mapToGlobal(local), pixels, units, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(window.windowHandle(), &event);
    }
    void turnNotches(int notches, QPoint at = {300, 100}) {
        turnWheel(at, {}, {0, 120 * notches});
        QTest::qWait(0);
    }
    void nativeGesture(Qt::NativeGestureType type, double value = 0) {
        QNativeGestureEvent event(type, QPointingDevice::primaryPointingDevice(), 2, {300, 100},
                                  {300, 100}, {300, 100}, value, {});
        QApplication::sendEvent(&canvas, &event);
    }
    double hours() const { return state->timelineHoursVisible; }
    std::string selectedName() const {
        const auto& pass = state->selectedPass.get();
        return pass ? pass->satName() : "none";
    }
    void key(Qt::Key key) {
        QTest::keyClick(&canvas, key);
        canvas.refresh();
    }
    std::string description() const { return canvas.accessibleDescription().toStdString(); }

    SatellitePtr high;
    SatellitePtr low;
    QWidget window;
    TimelineCanvas canvas{state};
    QWidget below;
};

TEST_F(TimelineCanvasTest, ArchesAreStretchedWhileTheSizeChangesAndDrawnAnewWhenItRests) {
    canvas.grab();
    bool isStretched = false;
    for (int width = 1001; width < 1200 && !isStretched; ++width) {
        const int before = canvas.archDrawings();
        canvas.setFixedSize(width, 224);
        canvas.grab();
        isStretched = canvas.archDrawings() == before;
    }
    ASSERT_TRUE(isStretched);
    const int drawings = canvas.archDrawings();
    canvas.grab();
    EXPECT_EQ(canvas.archDrawings(), drawings) << "not yet";
    machine.loop.advance(1);
    canvas.grab();
    EXPECT_EQ(canvas.archDrawings(), drawings + 1);
}

// ---- Tap.

TEST_F(TimelineCanvasTest, TapSelectsThePassAndAChannelAndStartsNothing) {
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, {120, 40});
    ASSERT_EQ(selectedName(), "HIGH");
    EXPECT_EQ((*state->selectedPass)->pass.riseTime, start + kHour);
    EXPECT_EQ((*state->selectedPass)->transmitter, high->transmitters[0]);
    EXPECT_EQ(state->selectedTransmitter.get(), high->transmitters[0]);
    EXPECT_FALSE(state->isTracking);
}

TEST_F(TimelineCanvasTest, TapWherePassesOverlapTakesTheHigherOne) {
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, {180, 210});
    EXPECT_EQ(selectedName(), "HIGH");
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, {230, 40});
    EXPECT_EQ(selectedName(), "LOW");
}

TEST_F(TimelineCanvasTest, TapOnNothingLeavesTheSelection) {
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, {120, 100});
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, {600, 100});
    EXPECT_EQ(selectedName(), "HIGH");
}

TEST_F(TimelineCanvasTest, TapOnTheTimeAxisOrWithAnotherButtonSelectsNothing) {
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, {120, 20});
    QTest::mouseClick(&canvas, Qt::RightButton, {}, {120, 100});
    EXPECT_EQ(selectedName(), "none");
}

TEST_F(TimelineCanvasTest, ElevationScaleLetsTheTapThrough) {
    addSatellite("LEFT", 3, {passAt(start, kHour)});
    canvas.setPasses(passesByElevation(state->selectedSatellites()));
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, {10, 100});
    EXPECT_EQ(selectedName(), "LEFT");
}

// ---- Drag.

TEST_F(TimelineCanvasTest, DragMovesTheContentWithThePointer) {
    QTest::mousePress(&canvas, Qt::LeftButton, {}, {500, 100});
    QTest::mouseMove(&canvas, {503, 100});
    EXPECT_EQ(state->timelineStartTime.get(), start) << "within the slack";
    QTest::mouseMove(&canvas, {600, 100});
    EXPECT_EQ(state->timelineStartTime.get(), start - kHour);
    QTest::mouseMove(&canvas, {450, 100});
    EXPECT_EQ(state->timelineStartTime.get(), start + 0.5 * kHour);
    QTest::mouseRelease(&canvas, Qt::LeftButton, {}, {450, 100});
    EXPECT_EQ(selectedName(), "none") << "no tap";
    QTest::mousePress(&canvas, Qt::LeftButton, {}, {100, 100});
    QTest::mouseMove(&canvas, {200, 100});
    EXPECT_EQ(state->timelineStartTime.get(), start - 0.5 * kHour) << "from where it was left";
    QTest::mouseRelease(&canvas, Qt::LeftButton, {}, {200, 100});
}

// ---- Wheel.

TEST_F(TimelineCanvasTest, NotchOfAWheelIsAnHour) {
    turnNotches(1);
    EXPECT_EQ(hours(), 11) << "away from the user";
    turnNotches(-1);
    turnNotches(-1);
    EXPECT_EQ(hours(), 9);
}

TEST_F(TimelineCanvasTest, FinerWheelsAndTouchpadsAddUp) {
    for (int i = 0; i < 3; ++i) turnWheel({300, 100}, {}, {0, 30});
    QTest::qWait(0);
    EXPECT_EQ(hours(), 10);
    turnWheel({300, 100}, {}, {0, 30});
    QTest::qWait(0);
    EXPECT_EQ(hours(), 11);
    turnWheel({300, 100}, {0, -2}, {0, -16});
    QTest::qWait(0);
    EXPECT_EQ(hours(), 11);
    turnWheel({300, 100}, {0, -1}, {0, -8});
    QTest::qWait(0);
    EXPECT_EQ(hours(), 10) << "three points";
}

TEST_F(TimelineCanvasTest, SidewaysScrollingZoomsNothing) {
    for (int i = 0; i < 5; ++i) turnWheel({300, 100}, {9, 0}, {72, 0});
    QTest::qWait(0);
    EXPECT_EQ(hours(), 10);
}

TEST_F(TimelineCanvasTest, ZoomingComesAfterTheEventHasGoneItsWay) {
    EventCounter seen(canvas, QEvent::Wheel);
    turnWheel({300, 100}, {}, {0, 120});
    EXPECT_EQ(seen.count, 1) << "the view beneath sees it";
    EXPECT_EQ(hours(), 10);
    QTest::qWait(0);
    EXPECT_EQ(hours(), 11);
}

TEST_F(TimelineCanvasTest, WheelElsewhereInTheWindowIsLeftAlone) {
    EventCounter seen(below, QEvent::Wheel);
    turnNotches(1, {300, 300});
    EXPECT_EQ(hours(), 10);
    EXPECT_EQ(seen.count, 1);
}

TEST_F(TimelineCanvasTest, WheelOverAHiddenCanvasIsNotObserved) {
    turnWheel({300, 100}, {}, {0, 60});
    canvas.hide();
    turnNotches(1);
    EXPECT_EQ(hours(), 10);
    canvas.show();
    turnWheel({300, 100}, {}, {0, 60});
    QTest::qWait(0);
    EXPECT_EQ(hours(), 10) << "the sum went with it";
    turnWheel({300, 100}, {}, {0, 60});
    QTest::qWait(0);
    EXPECT_EQ(hours(), 11);
}

TEST_F(TimelineCanvasTest, WheelStopsAtTheLimits) {
    state->timelineHoursVisible = 47.5;
    turnNotches(1);
    turnNotches(1);
    EXPECT_EQ(hours(), 48);
    state->timelineHoursVisible = 2.5;
    turnNotches(-1);
    turnNotches(-1);
    EXPECT_EQ(hours(), 2);
}

// ---- Pinch.

TEST_F(TimelineCanvasTest, PinchOnATouchpadStartsFromTwelveHoursEachTime) {
    nativeGesture(Qt::BeginNativeGesture);
    nativeGesture(Qt::ZoomNativeGesture, 0.005);
    EXPECT_EQ(hours(), 10) << "within the slack";
    nativeGesture(Qt::ZoomNativeGesture, 0.495);
    EXPECT_DOUBLE_EQ(hours(), 8);
    nativeGesture(Qt::ZoomNativeGesture, 0.5);
    EXPECT_DOUBLE_EQ(hours(), 6);
    nativeGesture(Qt::EndNativeGesture);
    nativeGesture(Qt::BeginNativeGesture);
    nativeGesture(Qt::ZoomNativeGesture, 0.25);
    EXPECT_DOUBLE_EQ(hours(), 9.6);
}

TEST_F(TimelineCanvasTest, PinchOnATouchScreenDoesTheSame) {
    QPinchGesture pinch;
    pinch.setTotalScaleFactor(0.5);
    QGestureEvent event({&pinch});
    QApplication::sendEvent(&canvas, &event);
    EXPECT_DOUBLE_EQ(hours(), 24);
}

TEST_F(TimelineCanvasTest, WheelContinuesFromTheSpanOfAPinch) {
    nativeGesture(Qt::BeginNativeGesture);
    nativeGesture(Qt::ZoomNativeGesture, 4);
    EXPECT_DOUBLE_EQ(hours(), 2.4);
    turnNotches(1);
    EXPECT_DOUBLE_EQ(hours(), 3.4);
}

TEST_F(TimelineCanvasTest, PinchEndsTheDragOfItsFirstFinger) {
    QTest::mousePress(&canvas, Qt::LeftButton, {}, {500, 100});
    nativeGesture(Qt::BeginNativeGesture);
    nativeGesture(Qt::ZoomNativeGesture, 1);
    QTest::mouseMove(&canvas, {700, 100});
    QTest::mouseRelease(&canvas, Qt::LeftButton, {}, {700, 100});
    EXPECT_EQ(state->timelineStartTime.get(), start);
}

// ---- Keyboard.

TEST_F(TimelineCanvasTest, ArrowsScrollByATenthOfTheSpan) {
    key(Qt::Key_Right);
    EXPECT_EQ(state->timelineStartTime.get(), start + kHour);
    key(Qt::Key_Left);
    key(Qt::Key_Left);
    EXPECT_EQ(state->timelineStartTime.get(), start - kHour);
    key(Qt::Key_Home);
    EXPECT_EQ(state->timelineStartTime.get(), start - 2.5 * kHour);
}

TEST_F(TimelineCanvasTest, PlusAndMinusZoom) {
    key(Qt::Key_Plus);
    EXPECT_EQ(hours(), 9);
    key(Qt::Key_Equal);
    EXPECT_EQ(hours(), 8) << "the same key without shift";
    key(Qt::Key_Minus);
    EXPECT_EQ(hours(), 9);
}

TEST_F(TimelineCanvasTest, KeyboardStepsThroughThePassesAndSelectsOne) {
    key(Qt::Key_Return);
    EXPECT_EQ(selectedName(), "none") << "nothing is marked";
    key(Qt::Key_Down);
    EXPECT_TRUE(description().ends_with("Marked: HIGH rises 01:26, in 1h 0m, highest 80°."))
        << description();
    key(Qt::Key_Down);
    key(Qt::Key_Down);  // there is none behind
    EXPECT_EQ(selectedName(), "none") << "marking selects nothing";
    key(Qt::Key_Space);
    EXPECT_EQ(selectedName(), "LOW");
    key(Qt::Key_Up);
    key(Qt::Key_Enter);
    EXPECT_EQ(selectedName(), "HIGH");
}

TEST_F(TimelineCanvasTest, KeyboardStaysOnItsPassWhenPassesAreComputedAnew) {
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    low->passes = std::make_shared<const PassList>(
        PassList{passAt(start + 0.1 * kHour), passAt(start + 1.5 * kHour + 3, kHour, 30)});
    canvas.setPasses(passesByElevation(state->selectedSatellites()));
    key(Qt::Key_Return);
    ASSERT_EQ(selectedName(), "LOW");
    EXPECT_EQ((*state->selectedPass)->pass.riseTime, start + 1.5 * kHour + 3);
}

TEST_F(TimelineCanvasTest, FirstMarkIsTheSelectedPass) {
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, {230, 100});
    canvas.setPasses(passesByElevation(state->selectedSatellites()));
    key(Qt::Key_Up);
    key(Qt::Key_Return);
    EXPECT_EQ(selectedName(), "HIGH") << "one before it";
}

TEST_F(TimelineCanvasTest, KeyboardWithoutPassesDoesNothing) {
    canvas.setPasses({});
    for (const auto k : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Return}) key(k);
    EXPECT_EQ(selectedName(), "none");
}

// ---- What is told, and what is drawn.

TEST_F(TimelineCanvasTest, TellsAScreenReaderHowManyPassesThereAreAndTheNext) {
    EXPECT_EQ(canvas.accessibleName(), "SkyTrack timeline");
    EXPECT_EQ(description(), "2 passes shown. Next: HIGH rises 01:26, in 1h 0m, highest 80°.");
    machine.loop.jumpClock(1.2 * kHour);
    canvas.updateNow();
    EXPECT_EQ(description(), "2 passes shown. Next: LOW rises 01:56, in 18m, highest 30°.")
        << "what is under way is not next";
}

TEST_F(TimelineCanvasTest, ClockIsFollowedOnlyWhileTheCanvasIsSeen) {
    const auto* everySecond = canvas.findChild<SecondTimer*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_NE(everySecond, nullptr);
    EXPECT_TRUE(everySecond->isActive());
    window.hide();
    EXPECT_FALSE(everySecond->isActive());
    machine.loop.jumpClock(1.2 * kHour);
    window.show();
    EXPECT_TRUE(everySecond->isActive());
    EXPECT_EQ(description(), "2 passes shown. Next: LOW rises 01:56, in 18m, highest 30°.");
}

TEST_F(TimelineCanvasTest, EqualStateDrawsNothingAnew) {
    window.grab();
    EventCounter painted(canvas, QEvent::Paint);
    for (int i = 0; i < 10; ++i) {
        state->currentAzimuth = i;
        canvas.refresh();
        QTest::qWait(0);
    }
    EXPECT_EQ(painted.count, 0);
    state->timelineHoursVisible = 5;
    canvas.refresh();
    QTest::qWait(0);
    EXPECT_EQ(painted.count, 1);
}

TEST_F(TimelineCanvasTest, ArchesAreDrawnAnewOnlyWhenTheyChange) {
    window.grab();
    int drawn = canvas.archDrawings();
    const auto isDrawnAnew = [&] {
        canvas.refresh();
        window.grab();
        return std::exchange(drawn, canvas.archDrawings()) != canvas.archDrawings();
    };
    machine.loop.jumpClock(60);
    canvas.updateNow();
    EXPECT_FALSE(isDrawnAnew()) << "the present moves over them";
    state->timelineStartTime = start + 60;
    EXPECT_TRUE(isDrawnAnew());
    state->timelineHoursVisible = 11;
    EXPECT_TRUE(isDrawnAnew());
    select(high, std::nullopt);
    EXPECT_TRUE(isDrawnAnew());
    canvas.setPasses({});
    EXPECT_TRUE(isDrawnAnew());
    canvas.setFixedSize(900, 224);
    EXPECT_TRUE(isDrawnAnew());
    Theme::apply(false);
    EXPECT_TRUE(isDrawnAnew());
    Theme::apply(true);
}

TEST_F(TimelineCanvasTest, PresentIsARedLineThatMoves) {
    state->timelineStartTime = start - 5 * kHour;
    canvas.setPasses({});
    canvas.refresh();
    const QColor red = Theme::color(Ink::red);
    EXPECT_EQ(canvas.grab().toImage().pixelColor(500, 190), red);
    machine.loop.jumpClock(kHour);
    EventCounter painted(canvas, QEvent::Paint);
    canvas.updateNow();
    QTest::qWait(0);
    EXPECT_EQ(painted.count, 1);
    EXPECT_EQ(canvas.grab().toImage().pixelColor(600, 190), red);
}

TEST_F(TimelineCanvasTest, NoRoomBreaksNothing) {
    for (const QSize size : {QSize(0, 0), QSize(1, 1), QSize(500, 28), QSize(500, 30)}) {
        canvas.setFixedSize(size);
        canvas.grab();
        QTest::mouseClick(&canvas, Qt::LeftButton, {}, {0, 0});
    }
    EXPECT_EQ(selectedName(), "none");
}

TEST(WheelMonitor, TouchpadCountsInPointsAndWheelInNotches) {
    const auto delta = [](QPoint pixels, QPoint units) {
        const QWheelEvent event({}, {}, pixels, units, Qt::NoButton, Qt::NoModifier,
                                Qt::NoScrollPhase, false);
        return WheelMonitor::scrollingDeltaY(event);
    };
    EXPECT_EQ(delta({}, {0, 120}), 3);
    EXPECT_EQ(delta({}, {0, -15}), -0.375);
    EXPECT_EQ(delta({0, 7}, {0, 56}), 7);
    EXPECT_EQ(delta({4, 0}, {32, 0}), 0);
}

}  // namespace
}  // namespace veloran::test
