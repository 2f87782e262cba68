#include "ui/map/satellite_map_view.h"

#include <QPaintEvent>
#include <algorithm>

#include "map_bodies.h"
#include "ui/map/map_canvas.h"
#include "ui/map/map_controls.h"
#include "ui/map/segmented_picker.h"

namespace veloran::test {
namespace {

class SatelliteMapViewTest : public UiFixture {
  protected:
    void SetUp() override {
        state->obsLongitude = -84.34;
        view.resize(500, 400);
        view.refresh();
        view.show();
        QTest::qWait(0);
    }

    MapCanvas& canvas() { return child<MapCanvas>(view, "satelliteMap"); }
    SegmentedPicker& picker() { return child<SegmentedPicker>(view, "mapStyle"); }
    QSlider& slider() { return child<QSlider>(view, "trackHours"); }
    void selectPass(const SatellitePtr& body, Instant rise, double seconds = 600) {
        state->selectedPass = passOf(body, rise, seconds);
        view.refresh();
    }
    template <class T>
    std::vector<T> shown() {
        std::vector<T> found;
        for (const MapLayer& layer : canvas().layers()) {
            if (const T* shape = std::get_if<T>(&layer)) found.push_back(*shape);
        }
        return found;
    }
    std::size_t extendedLines() {
        const auto lines = shown<MapLine>();
        return static_cast<std::size_t>(std::ranges::count_if(lines, [](const MapLine& line) {
            return line.stroke.paint == Paint(RgbColor{1, 1, 1});
        }));
    }

    SatellitePtr satellite = orbiting(51.6);
    SatelliteMapView view{state};
};

TEST_F(SatelliteMapViewTest, AppearingFitsTheCameraToTheObserver) {
    EXPECT_TRUE(canvas().isEasing());
    canvas().finishMotion();
    EXPECT_NEAR(canvas().camera().center.lon, -84.34, 1e-9);
    EXPECT_NEAR(canvas().camera().distance, 50e6, 1);
    QTest::mouseDClick(&canvas(), Qt::LeftButton, {}, {100, 100});
    view.hide();
    view.show();
    canvas().finishMotion();
    EXPECT_NEAR(canvas().camera().distance, 50e6, 1) << "each time";
}

TEST_F(SatelliteMapViewTest, ChangeOfStyleFitsTheCameraOfThatStyle) {
    canvas().finishMotion();
    QTest::mouseClick(&picker().segment(1), Qt::LeftButton);
    EXPECT_TRUE(canvas().isEasing());
    canvas().finishMotion();
    EXPECT_NEAR(canvas().camera().center.lat, 20, 1e-9);
    EXPECT_NEAR(canvas().camera().distance, 30e6, 1);
}

TEST_F(SatelliteMapViewTest, SelectionAndTimeLeaveTheCameraAlone) {
    canvas().finishMotion();
    QTest::mouseDClick(&canvas(), Qt::LeftButton, {}, {100, 300});
    const MapCamera before = canvas().camera();
    selectPass(satellite, start);
    machine.loop.jumpClock(300);
    view.tick();
    state->obsLongitude = 10;
    view.refresh();
    EXPECT_EQ(canvas().camera(), before);
    EXPECT_FALSE(canvas().isEasing());
}

TEST_F(SatelliteMapViewTest, HomeKeyFitsAgain) {
    canvas().finishMotion();
    QTest::mouseDClick(&canvas(), Qt::LeftButton, {}, {100, 300});
    QTest::keyClick(&canvas(), Qt::Key_Home);
    canvas().finishMotion();
    EXPECT_NEAR(canvas().camera().distance, 50e6, 1);
}

TEST_F(SatelliteMapViewTest, SelectedPassIsComputedOnceAndGivenUpWithItsSelection) {
    EXPECT_FALSE(view.passTrackCache().cachedPass);
    selectPass(satellite, start);
    EXPECT_EQ(view.passTrackCache().cachedPass->riseTime, start);
    selectPass(satellite, start + 6000);
    EXPECT_EQ(view.passTrackCache().cachedPass->riseTime, start + 6000);
    state->selectedPass = std::nullopt;
    view.refresh();
    EXPECT_FALSE(view.passTrackCache().cachedPass);
    EXPECT_EQ(canvas().layers().size(), 1u) << "the site";
}

TEST_F(SatelliteMapViewTest, AnotherSatelliteWithTheSameRiseHasItsOwnTrack) {
    selectPass(satellite, start);
    const auto polar = orbiting(98, 33591, "NOAA 19");
    selectPass(polar, start);
    EXPECT_EQ(view.passTrackCache().cachedTrack.at(0).latitudeDeg,
              polar->currentSubPoint(start)->latitudeDeg);
    EXPECT_EQ(shown<MapSatellite>().at(0).name, "NOAA 19");
}

TEST_F(SatelliteMapViewTest, SitesFollowTheState) {
    state->obsName = "";
    state->obsLatitude = 51;
    view.refresh();
    EXPECT_EQ(shown<MapSite>().at(0).label, "Home");
    EXPECT_EQ(shown<MapSite>().at(0).at.lat, 51);
    state->obs2Enabled = true;
    state->obs2Name = "Cabin";
    view.refresh();
    EXPECT_EQ(shown<MapSite>().at(1).label, "Cabin");
    state->obs2Enabled = false;
    view.refresh();
    EXPECT_EQ(shown<MapSite>().size(), 1u);
}

TEST_F(SatelliteMapViewTest, SliderShowsTheExtendedTrackAndZeroHidesIt) {
    selectPass(satellite, start);
    EXPECT_EQ(extendedLines(), 0u);
    slider().setValue(8);
    EXPECT_GE(extendedLines(), 5u);
    slider().setValue(0);
    EXPECT_EQ(extendedLines(), 0u);
    EXPECT_EQ(textOf(view, "trackHoursText"), "off");
}

TEST_F(SatelliteMapViewTest, EverySecondTheSatelliteMoves) {
    selectPass(satellite, start);
    const GeoPoint before = shown<MapSatellite>().at(0).at;
    machine.loop.advance(1);
    EXPECT_NE(shown<MapSatellite>().at(0).at, before);
    const auto point = satellite->currentSubPoint(start + 1);
    EXPECT_NEAR(shown<MapSatellite>().at(0).at.lat, point->latitudeDeg, 1e-5);
    EXPECT_NEAR(shown<MapSatellite>().at(0).at.lon, point->longitudeDeg, 1e-5);
}

TEST_F(SatelliteMapViewTest, HiddenMapStandsStill) {
    const auto& timer = child<LoopTimer>(view, "mapEverySecond");
    EXPECT_TRUE(timer.isActive());
    EXPECT_TRUE(canvas().isEasing());
    view.hide();
    EXPECT_FALSE(canvas().isEasing());
    EXPECT_FALSE(timer.isActive());
    view.show();
    EXPECT_TRUE(timer.isActive());
}

TEST_F(SatelliteMapViewTest, WindowBackFromTheDockIsUpToDateUnderTheSameCamera) {
    selectPass(satellite, start);
    canvas().finishMotion();
    QTest::mouseDClick(&canvas(), Qt::LeftButton, {}, {100, 300});
    const MapCamera before = canvas().camera();
    view.showMinimized();
    EXPECT_FALSE(child<LoopTimer>(view, "mapEverySecond").isActive());
    machine.loop.jumpClock(60);
    view.showNormal();
    const auto point = satellite->currentSubPoint(start + 60);
    EXPECT_EQ(shown<MapSatellite>().at(0).at, (GeoPoint{point->latitudeDeg, point->longitudeDeg}));
    EXPECT_FALSE(canvas().isEasing());
    EXPECT_EQ(canvas().camera().center, before.center);
}

/// Counts what is painted.
class PaintCounter : public QObject {
  public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    int count = 0;

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++count;
        return false;
    }
};

TEST_F(SatelliteMapViewTest, TicksOfTheTrackingRepaintNothing) {
    selectPass(satellite, start);
    canvas().finishMotion();
    QTest::qWait(0);
    view.grab();
    QCoreApplication::processEvents();
    PaintCounter painted(canvas());
    for (int i = 0; i < 20; ++i) {
        state->currentAzimuth = i;
        view.refresh();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    EXPECT_LE(painted.count, 1) << "the last frame of the motion may come late";
    selectPass(satellite, start + 6000);
    const int before = painted.count;
    EXPECT_TRUE(QTest::qWaitFor([&] { return painted.count > before; }, kPatienceMs));
}

TEST_F(SatelliteMapViewTest, ControlsStandEightPointsFromTheTopRight) {
    for (const QSize size : {QSize(500, 400), QSize(320, 200)}) {
        view.resize(size);
        QTest::qWait(0);
        const QRect track(child<QWidget>(view, "trackControl").mapTo(&view, QPoint(0, 0)),
                          child<QWidget>(view, "trackControl").size());
        EXPECT_EQ(track.top(), 8);
        EXPECT_EQ(track.right() + 1, size.width() - 8);
        const QRect styles(picker().mapTo(&view, QPoint(0, 0)), picker().size());
        EXPECT_EQ(styles.right() + 1, size.width() - 8);
        EXPECT_EQ(canvas().size(), size);
    }
}

TEST_F(SatelliteMapViewTest, ClickBesideTheControlsReachesTheMap) {
    const QPoint corner = picker().mapTo(&view, QPoint(picker().width() / 2, 10));
    EXPECT_TRUE(picker().isAncestorOf(view.childAt(corner)));
    const QPoint below = corner + QPoint(0, 30);
    EXPECT_EQ(view.childAt(below), &canvas());
}

TEST_F(SatelliteMapViewTest, GapsBetweenTheControlsBelongToTheMap) {
    auto& track = child<QWidget>(view, "trackControl");
    const QPoint gap = track.mapTo(&view, QPoint(-10, track.height() / 2));
    const QPoint between = track.mapTo(&view, QPoint(20, track.height() + 4));
    EXPECT_EQ(view.childAt(gap), &canvas());
    EXPECT_EQ(view.childAt(between), &canvas());
}

TEST_F(SatelliteMapViewTest, PictureIsToldInWords) {
    EXPECT_EQ(canvas().accessibleName(), "Satellite map");
    EXPECT_EQ(canvas().accessibleDescription(), "No pass is selected.");
    selectPass(satellite, start);
    const QString words = canvas().accessibleDescription();
    EXPECT_TRUE(words.startsWith("RS-44 over ")) << words.toStdString();
    EXPECT_TRUE(words.endsWith(" km high")) << words.toStdString();
}

TEST_F(SatelliteMapViewTest, UnknownStoredStyleShowsTheFlatMap) {
    machine.settings.set("mapStyle", std::string("terrain"));
    SatelliteMapView other(state);
    other.show();
    child<MapCanvas>(other, "satelliteMap").finishMotion();
    EXPECT_NEAR(child<MapCanvas>(other, "satelliteMap").camera().center.lat, 0, 1e-9);
    EXPECT_TRUE(child<SegmentedPicker>(other, "mapStyle").segment(0).isChecked());
}

TEST_F(SatelliteMapViewTest, PolarPassIsDrawnInOnePieceWithoutOutline) {
    selectPass(orbiting(98, 33591, "NOAA 19"), start, 6000);
    EXPECT_EQ(shown<MapArea>().size(), 2u) << "the coverage and the footprint";
    const auto lines = shown<MapLine>();
    EXPECT_TRUE(std::ranges::none_of(lines, [](const MapLine& line) {
        return line.stroke.paint == Paint(RgbColor{1, 0.85, 0.25});
    }));
    EXPECT_FALSE(view.grab().isNull());
}

}  // namespace
}  // namespace veloran::test
