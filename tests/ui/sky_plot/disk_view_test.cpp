#include "ui/sky_plot/disk_view.h"

#include <QPaintEvent>

#include "ui/scene/mini_polar_plot.h"
#include "ui/sky_plot/live_look.h"
#include "ui/sky_plot/sky_fixture.h"
#include "ui/theme.h"

namespace veloran::test {
namespace {

class DiskViewTest : public SkyFixture {
  protected:
    static constexpr int kSide = 280;

    /// Collects what is painted of the view.
    class Paints : public QObject {
      public:
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint) {
                ++count;
                area += static_cast<QPaintEvent*>(event)->region();
            }
            return false;
        }
        int count = 0;
        QRegion area;
    };

    void show() {
        view.resize(kSide, kSide);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view, kPatienceMs));
        QTest::qWait(0);
        view.installEventFilter(&paints);
    }

    void frame() {
        view.showFrame();
        QCoreApplication::sendPostedEvents();
    }

    QPoint place() {
        const auto look = liveAzEl(*state, state->now());
        const SkyDisk disk = skyDisk(kSide, kSide);
        const auto p = polarPoint(look->azimuth, look->elevation, disk.center, disk.radius);
        return {static_cast<int>(p.x), static_cast<int>(p.y)};
    }

    QColor at(QPoint point) { return view.grab().toImage().pixelColor(point); }

    DiskView view{state};
    Paints paints;
};

TEST_F(DiskViewTest, BeaconStandsWhereTheSatelliteIs) {
    selectPass();
    view.refresh();
    show();
    EXPECT_EQ(at(place()), Theme::color(Ink::green));
}

TEST_F(DiskViewTest, BeaconMovesForATrackedSatelliteWithoutAPass) {
    state->trackingSatellite = satellite;
    show();
    const QPoint before = place();
    EXPECT_EQ(at(before), Theme::color(Ink::green));
    goTo(pass.peakTime + 120);
    frame();
    EXPECT_EQ(at(place()), Theme::color(Ink::green));
    EXPECT_EQ(at(before), Theme::color(Ink::control));
}

TEST_F(DiskViewTest, FramePaintsTheOldAndTheNewPlaceOnly) {
    selectPass();
    view.refresh();
    show();
    const QRect before(place() - QPoint(22, 22), QSize(44, 44));
    goTo(pass.peakTime + 30);
    const QRect after(place() - QPoint(22, 22), QSize(44, 44));
    frame();
    EXPECT_GE(paints.count, 1);
    EXPECT_TRUE(paints.area.contains(before.center()) && paints.area.contains(after.center()));
    EXPECT_TRUE((QRegion(before) + after - paints.area).isEmpty());
    const QRect painted = paints.area.boundingRect();
    EXPECT_LT(painted.width() * painted.height(), kSide * kSide / 2);
}

TEST_F(DiskViewTest, FrameWithBearingLinePaintsTheLineToo) {
    state->polarBearingLine = true;
    selectPass();
    show();
    frame();
    EXPECT_TRUE(paints.area.contains(QPoint(kSide / 2, kSide / 2)));
    state->polarBearingLine = false;
    frame();
    paints.area = {};
    frame();
    EXPECT_FALSE(paints.area.contains(QPoint(kSide / 2, kSide / 2))) << "the line has gone";
}

TEST_F(DiskViewTest, FrameBelowTheHorizonPaintsNothing) {
    selectPass();
    show();
    goTo(pass.setTime + 60);
    frame();
    EXPECT_GE(paints.count, 1) << "the beacon is taken away";
    const int painted = paints.count;
    for (int i = 0; i < 10; ++i) {
        machine.loop.jumpClock(1);
        frame();
    }
    EXPECT_EQ(paints.count, painted);
}

TEST_F(DiskViewTest, FrameWithoutASatellitePaintsNothing) {
    show();
    for (int i = 0; i < 10; ++i) {
        machine.loop.jumpClock(1);
        frame();
    }
    EXPECT_EQ(paints.count, 0);
}

TEST_F(DiskViewTest, TrackIsPaintedForTheSelectedPassOnly) {
    const SkyDisk disk = skyDisk(kSide, kSide);
    const PassPoint& p = pass.trackPoints.front();
    const auto rise = polarPoint(p.azimuth, p.elevation, disk.center, disk.radius);
    const QPoint inside(static_cast<int>(rise.x), static_cast<int>(rise.y));
    goTo(pass.setTime + 60);
    show();
    EXPECT_NE(at(inside), Theme::color(Ink::green));
    selectPass();
    view.refresh();
    EXPECT_EQ(at(inside), Theme::color(Ink::green));
    state->selectedPass = std::nullopt;
    view.refresh();
    EXPECT_NE(at(inside), Theme::color(Ink::green));
}

TEST_F(DiskViewTest, RefreshWithoutAnotherSelectionPaintsNothing) {
    goTo(pass.setTime + 60);
    selectPass();
    view.refresh();
    show();
    for (int i = 0; i < 50; ++i) {
        state->currentAzimuth = i;
        view.refresh();
        QCoreApplication::sendPostedEvents();
    }
    EXPECT_EQ(paints.count, 0);
}

TEST_F(DiskViewTest, DescribesInWordsWhereTheSatelliteIs) {
    EXPECT_EQ(view.accessibleName(), "Sky plot");
    EXPECT_EQ(view.accessibleDescription(), "No satellite selected");
    goTo(pass.peakTime - 120);
    selectPass();
    view.refresh();
    const QString rising = view.accessibleDescription();
    EXPECT_TRUE(rising.startsWith("LOW-1: azimuth ")) << rising.toStdString();
    EXPECT_TRUE(rising.endsWith(", rising")) << rising.toStdString();
    goTo(pass.setTime + 60);
    view.showFrame();
    EXPECT_EQ(view.accessibleDescription(), rising) << "not frame by frame";
    view.describe();
    EXPECT_EQ(view.accessibleDescription(), "LOW-1: below the horizon");
}

TEST_F(DiskViewTest, StandsStillWhileItCannotBeSeen) {
    show();
    EXPECT_TRUE(view.frames().isRunning());
    view.hide();
    EXPECT_FALSE(view.frames().isRunning());
}

}  // namespace
}  // namespace veloran::test
