#include "ui/map/map_canvas.h"

#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QWheelEvent>
#include <cmath>

#include "map_bodies.h"
#include "ui/map/map_projection.h"
#include "ui/theme.h"

namespace veloran::test {
namespace {

class MapCanvasTest : public UiFixture {
  protected:
    void SetUp() override {
        canvas.resize(600, 400);
        canvas.show();
        QTest::qWait(0);
        show(MapStyle::standard);
    }

    void show(MapStyle shown) {
        style = shown;
        canvas.setMapStyle(style);
        canvas.easeTo({.center = {0, -84}, .distance = 20e6});
        canvas.finishMotion();
    }
    std::optional<GeoPoint> groundAt(QPointF at) {
        return makeProjection(style, canvas.camera(), canvas.size())->toGeo({at.x(), at.y()});
    }
    void expectGround(QPointF at, const std::optional<GeoPoint>& expected) {
        const auto ground = groundAt(at);
        ASSERT_TRUE(ground && expected);
        EXPECT_NEAR(ground->lat, expected->lat, 1e-6);
        EXPECT_NEAR(std::remainder(ground->lon - expected->lon, 360), 0, 1e-6);
    }
    void drag(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPoint from, QPoint to) {
        QTest::mousePress(&canvas, button, modifiers, from);
        move(to, button);
        QTest::mouseRelease(&canvas, button, modifiers, to);
    }
    void move(QPoint to, Qt::MouseButtons buttons) {
        QMouseEvent event(QEvent::MouseMove, to, canvas.mapToGlobal(to), Qt::NoButton, buttons, {});
        QApplication::sendEvent(&canvas, &event);
    }
    void turnWheel(QPoint at, QPoint pixels, QPoint units) {
        QWheelEvent event(at, canvas.mapToGlobal(at), pixels, units, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&canvas, &event);
    }
    void gesture(Qt::NativeGestureType type, QPoint at, double value) {
        QNativeGestureEvent event(type, QPointingDevice::primaryPointingDevice(), 2, at, at,
                                  canvas.mapToGlobal(at), value, {});
        QApplication::sendEvent(&canvas, &event);
    }
    double heading() const { return canvas.camera().heading; }

    MapStyle style = MapStyle::standard;
    MapCanvas canvas{machine.loop, machine.loop};
};

TEST_F(MapCanvasTest, BeginsOverNorthAmerica) {
    const MapCanvas fresh(machine.loop, machine.loop);
    EXPECT_NEAR(fresh.camera().center.lon, -84, 1e-9);
    EXPECT_EQ(fresh.camera().distance, 50e6);
}

TEST_F(MapCanvasTest, DraggedGroundStaysBelowThePointer) {
    for (const MapStyle each : kMapStyles) {
        show(each);
        const auto grabbed = groundAt({280, 190});
        QTest::mousePress(&canvas, Qt::LeftButton, {}, {280, 190});
        for (const QPoint at : {QPoint{300, 200}, QPoint{330, 230}, QPoint{350, 180}}) {
            move(at, Qt::LeftButton);
            expectGround(at, grabbed);
        }
        QTest::mouseRelease(&canvas, Qt::LeftButton, {}, {350, 180});
        const MapCamera left = canvas.camera();
        move({100, 100}, Qt::NoButton);
        EXPECT_EQ(canvas.camera(), left) << "let go";
    }
}

TEST_F(MapCanvasTest, FlatMapWrapsWhileItIsDragged) {
    for (int i = 0; i < 8; ++i) drag(Qt::LeftButton, {}, {500, 200}, {100, 200});
    EXPECT_GE(canvas.camera().center.lon, -180);
    EXPECT_LT(canvas.camera().center.lon, 180);
    EXPECT_TRUE(groundAt({0, 200}) && groundAt({599, 200}));
}

TEST_F(MapCanvasTest, WheelZoomsAboutThePointer) {
    for (const MapStyle each : kMapStyles) {
        show(each);
        const auto below = groundAt({330, 180});
        turnWheel({330, 180}, {}, {0, 120});
        EXPECT_LT(canvas.camera().distance, 20e6);
        expectGround({330, 180}, below);
        const double near = canvas.camera().distance;
        turnWheel({330, 180}, {0, -40}, {0, -40});
        EXPECT_GT(canvas.camera().distance, near);
        expectGround({330, 180}, below);
    }
}

TEST_F(MapCanvasTest, WheelWithinADragKeepsTheGroundBelowThePointer) {
    QTest::mousePress(&canvas, Qt::LeftButton, {}, {280, 190});
    const auto grabbed = groundAt({280, 190});
    turnWheel({280, 190}, {}, {0, 240});
    move({320, 220}, Qt::LeftButton);
    expectGround({320, 220}, grabbed);
    QTest::mouseRelease(&canvas, Qt::LeftButton, {}, {320, 220});
}

TEST_F(MapCanvasTest, DoubleClickGoesTwiceAsNear) {
    const auto below = groundAt({330, 180});
    QTest::mouseDClick(&canvas, Qt::LeftButton, {}, {330, 180});
    EXPECT_NEAR(canvas.camera().distance, 10e6, 1);
    expectGround({330, 180}, below);
}

TEST_F(MapCanvasTest, RightOrShiftDragTurnsTheGlobe) {
    show(MapStyle::imagery);
    drag(Qt::RightButton, {}, {300, 100}, {400, 200});
    EXPECT_NEAR(heading(), 270, 1e-6) << "a quarter clockwise";
    drag(Qt::LeftButton, Qt::ShiftModifier, {400, 200}, {300, 100});
    EXPECT_NEAR(std::remainder(heading(), 360), 0, 1e-6) << "and back";
    EXPECT_NEAR(canvas.camera().center.lat, 0, 1e-9);
}

TEST_F(MapCanvasTest, FlatMapDoesNotTurn) {
    const MapCamera before = canvas.camera();
    drag(Qt::RightButton, {}, {300, 100}, {400, 200});
    gesture(Qt::RotateNativeGesture, {300, 200}, 20);
    QTest::keyClick(&canvas, Qt::Key_BracketRight);
    EXPECT_EQ(canvas.camera(), before);
}

TEST_F(MapCanvasTest, PinchAndRotationOfATouchpad) {
    show(MapStyle::hybrid);
    const auto below = groundAt({320, 210});
    gesture(Qt::ZoomNativeGesture, {320, 210}, 0.25);
    EXPECT_NEAR(canvas.camera().distance, 16e6, 1);
    expectGround({320, 210}, below);
    gesture(Qt::RotateNativeGesture, {300, 200}, 20);
    EXPECT_NEAR(heading(), 340, 1e-9);
    gesture(Qt::SmartZoomNativeGesture, {300, 200}, 1);
    EXPECT_NEAR(canvas.camera().distance, 8e6, 1);
    gesture(Qt::ZoomNativeGesture, {320, 210}, -5);
    EXPECT_NEAR(canvas.camera().distance, 8e6, 1) << "a factor that is none";
}

TEST_F(MapCanvasTest, KeysPanZoomAndTurn) {
    QTest::keyClick(&canvas, Qt::Key_Right);
    EXPECT_GT(canvas.camera().center.lon, -84);
    QTest::keyClick(&canvas, Qt::Key_Left);
    EXPECT_NEAR(canvas.camera().center.lon, -84, 1e-6);
    QTest::keyClick(&canvas, Qt::Key_Up);
    EXPECT_GT(canvas.camera().center.lat, 0);
    QTest::keyClick(&canvas, Qt::Key_Down);
    EXPECT_NEAR(canvas.camera().center.lat, 0, 1e-6);
    QTest::keyClick(&canvas, Qt::Key_Plus);
    EXPECT_LT(canvas.camera().distance, 20e6);
    QTest::keyClick(&canvas, Qt::Key_Minus);
    EXPECT_NEAR(canvas.camera().distance, 20e6, 1);
    show(MapStyle::imagery);
    const double latitude = canvas.camera().center.lat;
    for (int i = 0; i < 9; ++i) QTest::keyClick(&canvas, Qt::Key_Right);
    EXPECT_NEAR(canvas.camera().center.lat, latitude, 1e-9);
    const double longitude = canvas.camera().center.lon;
    QTest::keyClick(&canvas, Qt::Key_Up);
    EXPECT_GT(canvas.camera().center.lat, latitude + 1);
    EXPECT_NEAR(canvas.camera().center.lon, longitude, 1e-9);
    QTest::keyClick(&canvas, Qt::Key_BracketRight);
    EXPECT_NEAR(heading(), 345, 1e-9);
    QTest::keyClick(&canvas, Qt::Key_BracketLeft);
    EXPECT_NEAR(std::remainder(heading(), 360), 0, 1e-9);
}

TEST_F(MapCanvasTest, HomeAndZeroAskForTheWholePicture) {
    QSignalSpy asked(&canvas, &MapCanvas::fitRequested);
    QTest::keyClick(&canvas, Qt::Key_Home);
    QTest::keyClick(&canvas, Qt::Key_0);
    EXPECT_EQ(asked.count(), 2);
}

TEST_F(MapCanvasTest, EasesInFourTenthsOfASecond) {
    const MapCamera goal{.center = {10, -44}, .distance = 20e6};
    canvas.easeTo(goal);
    EXPECT_NEAR(canvas.camera().center.lon, -84, 1e-9);
    machine.loop.jumpClock(0.2);
    canvas.advanceMotion();
    EXPECT_NEAR(canvas.camera().center.lon, -64, 1e-4);
    EXPECT_TRUE(canvas.isEasing());
    machine.loop.jumpClock(0.21);
    canvas.advanceMotion();
    EXPECT_EQ(canvas.camera().center, goal.center);
    EXPECT_FALSE(canvas.isEasing());
}

TEST_F(MapCanvasTest, MotionEndsAtItsGoalWhileTheClockRunsOn) {
    const MapCamera goal{.center = {10, -44}, .distance = 20e6};
    struct RunningClock final : Clock {
        Instant now() const override { return at = at + 0.13; }
        mutable Instant at{817000000.0};
    } clock;
    MapCanvas running(machine.loop, clock);
    running.resize(600, 400);
    running.easeTo(goal);
    while (running.isEasing()) running.advanceMotion();
    EXPECT_EQ(running.camera().center, goal.center);
}

TEST_F(MapCanvasTest, TimerOfTheFramesBringsItToItsGoal) {
    canvas.easeTo({.center = {10, -44}, .distance = 20e6});
    machine.loop.advance(0.3);
    EXPECT_TRUE(canvas.isEasing());
    machine.loop.advance(0.2);
    EXPECT_FALSE(canvas.isEasing());
    EXPECT_NEAR(canvas.camera().center.lon, -44, 1e-9);
}

TEST_F(MapCanvasTest, EveryGestureTakesHoldOfAMovingMap) {
    const auto holds = [this](const auto& gestureOfUser) {
        show(style);
        canvas.easeTo({.center = {10, -44}, .distance = 20e6});
        machine.loop.jumpClock(0.2);
        canvas.advanceMotion();
        gestureOfUser();
        return !canvas.isEasing();
    };
    EXPECT_TRUE(holds([this] { QTest::mousePress(&canvas, Qt::LeftButton, {}, {280, 190}); }));
    QTest::mouseRelease(&canvas, Qt::LeftButton);
    EXPECT_TRUE(holds([this] { turnWheel({300, 200}, {}, {0, 120}); }));
    EXPECT_TRUE(holds([this] { QTest::keyClick(&canvas, Qt::Key_Left); }));
    EXPECT_TRUE(holds([this] { gesture(Qt::ZoomNativeGesture, {300, 200}, 0.1); }));
    EXPECT_NEAR(canvas.camera().center.lon, -64, 1) << "goes on from where it was";
}

TEST_F(MapCanvasTest, WorldIsDrawnOnceWhileOnlyLayersMove) {
    canvas.grab();
    const int drawings = canvas.baseMapDrawings();
    for (int i = 0; i < 5; ++i) {
        canvas.setLayers({MapSite{{double(i), 10}, "Home", Symbol::antenna, Ink::cyan}});
        canvas.grab();
    }
    EXPECT_EQ(canvas.baseMapDrawings(), drawings);
}

TEST_F(MapCanvasTest, WorldIsDrawnAnewForCameraStyleSizeAndTheme) {
    int drawings = 0;
    const auto drawnAnew = [&] {
        canvas.grab();
        const bool isMore = canvas.baseMapDrawings() > drawings;
        drawings = canvas.baseMapDrawings();
        return isMore;
    };
    EXPECT_TRUE(drawnAnew());
    EXPECT_FALSE(drawnAnew());
    QTest::keyClick(&canvas, Qt::Key_Left);
    EXPECT_TRUE(drawnAnew()) << "camera";
    canvas.setMapStyle(MapStyle::imagery);
    EXPECT_TRUE(drawnAnew()) << "style";
    canvas.resize(500, 300);
    EXPECT_TRUE(drawnAnew()) << "size";
    Theme::apply(false);
    EXPECT_TRUE(drawnAnew()) << "theme";
    Theme::apply(true);
}

TEST_F(MapCanvasTest, WorldIsStretchedWhileTheSizeChangesAndDrawnAnewWhenItRests) {
    canvas.grab();
    const auto drawingsInADrag = [&] {
        const int before = canvas.baseMapDrawings();
        for (int i = 0; i < 10; ++i) {
            canvas.resize(canvas.width() + 1, 400);
            canvas.grab();
            machine.loop.advance(0.01);
        }
        return canvas.baseMapDrawings() - before;
    };
    EXPECT_EQ(drawingsInADrag(), 10) << "as long as the camera has not settled";
    machine.loop.advance(1);
    canvas.grab();
    EXPECT_LT(drawingsInADrag(), 10);
    const int drawings = canvas.baseMapDrawings();
    machine.loop.advance(1);
    canvas.grab();
    EXPECT_EQ(canvas.baseMapDrawings(), drawings + 1);
}

TEST_F(MapCanvasTest, SceneFollowsTheCamera) {
    canvas.setLayers({MapSite{{0, -84}, "Home", Symbol::antenna, Ink::cyan}});
    const auto place = [this] { return std::get<scene::Disc>(canvas.scene().at(0)).center; };
    EXPECT_NEAR(place().x, 300, 1e-6);
    EXPECT_NEAR(place().y, 200, 1e-6);
    drag(Qt::LeftButton, {}, {300, 200}, {350, 230});
    EXPECT_NEAR(place().x, 350, 1e-6);
    EXPECT_NEAR(place().y, 230, 1e-6);
}

TEST_F(MapCanvasTest, SiteBehindTheGlobeIsNotDrawn) {
    show(MapStyle::imagery);
    canvas.setLayers({MapSite{{0, 96}, "Home", Symbol::antenna, Ink::cyan}});
    EXPECT_TRUE(canvas.scene().empty());
}

TEST_F(MapCanvasTest, SatelliteIsPaintedInItsColourAtItsPlace) {
    canvas.setLayers({MapSatellite{{0, -84}, "RS-44", RgbColor{1, 0, 0}}});
    const QImage picture = canvas.grab().toImage();
    EXPECT_EQ(picture.pixelColor(300 - 6, 200), QColor(255, 0, 0));
}

}  // namespace
}  // namespace veloran::test
