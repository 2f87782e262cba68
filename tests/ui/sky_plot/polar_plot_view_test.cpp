#include "ui/sky_plot/polar_plot_view.h"

#include <QAccessible>

#include "ui/sky_plot/disk_view.h"
#include "ui/sky_plot/look_angle_table.h"
#include "ui/sky_plot/sky_fixture.h"

namespace veloran::test {
namespace {

class PolarPlotViewTest : public SkyFixture {
  protected:
    void show(QSize size) {
        view.resize(size);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view, kPatienceMs));
    }

    QWidget& disk() { return child<QWidget>(view, "skyDisk"); }
    QWidget& table() { return child<QWidget>(view, "skyTable"); }

    PolarPlotView view{state};
};

TEST_F(PolarPlotViewTest, WithoutPassAndSatelliteAllValuesAreDashes) {
    for (const RowName& name : kRowNames) EXPECT_EQ(textOf(view, name.objectName), "—");
}

TEST_F(PolarPlotViewTest, TrackedSatelliteWithoutAPassHasLookAnglesOnly) {
    state->trackingSatellite = satellite;
    view.refresh();
    for (std::size_t i = 0; i < kTableRows; ++i) {
        EXPECT_EQ(textOf(view, kRowNames[i].objectName) == "—", i < kPassRows);
    }
}

TEST_F(PolarPlotViewTest, SelectionShowsAtOnceAndTicksDoNot) {
    selectPass();
    view.refresh();
    EXPECT_EQ(textOf(view, "skyState"), "★ AT TCA");
    const QString azimuth = textOf(view, "skyAzimuth");
    goTo(pass.setTime + 1);
    view.refresh();
    EXPECT_EQ(textOf(view, "skyState"), "★ AT TCA") << "the table waits for its second";
    EXPECT_EQ(textOf(view, "skyAzimuth"), azimuth);
    state->selectedPass = std::nullopt;
    view.refresh();
    EXPECT_EQ(textOf(view, "skyState"), "—");
}

TEST_F(PolarPlotViewTest, TableFollowsTheClockEverySecondWhileShown) {
    selectPass();
    view.refresh();
    show({404, 204});
    goTo(pass.setTime);
    machine.loop.advance(1);
    EXPECT_EQ(textOf(view, "skyState"), "ended");
    EXPECT_EQ(textOf(view, "skyCountdown"), "ended");
    EXPECT_EQ(disk().accessibleDescription(), "LOW-1: below the horizon");
}

TEST_F(PolarPlotViewTest, TableStandsWhileItCannotBeSeen) {
    const auto& timer = child<LoopTimer>(view, "skyEverySecond");
    EXPECT_FALSE(timer.isActive());
    show({404, 204});
    EXPECT_TRUE(timer.isActive());
    EXPECT_EQ(timer.seconds(), 1);
    view.showMinimized();
    EXPECT_FALSE(timer.isActive());
    view.showNormal();
    EXPECT_TRUE(timer.isActive());
    view.hide();
    EXPECT_FALSE(timer.isActive());
}

TEST_F(PolarPlotViewTest, ShowingItAgainBringsItUpToDate) {
    selectPass();
    view.refresh();
    show({404, 204});
    view.hide();
    goTo(pass.setTime + 1);
    view.show();
    EXPECT_EQ(textOf(view, "skyState"), "ended");
}

TEST_F(PolarPlotViewTest, TableStandsBesideASquareDiskWithoutOverlapOrClipping) {
    selectPass();
    view.refresh();
    for (const QSize size : {view.minimumSizeHint(), QSize(320, 150), QSize(320, 180),
                             QSize(404, 204), QSize(700, 700)}) {
        show(size);
        EXPECT_EQ(disk().width(), disk().height());
        EXPECT_EQ(disk().pos(), QPoint(0, 0));
        EXPECT_EQ(table().x(), disk().width() + 12);
        EXPECT_EQ(table().y(), 0);
        EXPECT_TRUE(view.rect().contains(table().geometry())) << size.width();
        for (const RowName& name : kRowNames) {
            const auto& value = child<ValueLabel>(view, name.objectName);
            EXPECT_TRUE(table().rect().contains(value.geometry())) << name.label;
            EXPECT_LE(value.sizeHint().width(), value.width()) << name.label;
        }
    }
}

TEST_F(PolarPlotViewTest, DiskHasTwoHundredPointsInTheLeastSize) {
    show(view.minimumSizeHint());
    EXPECT_GE(disk().width(), 200);
    EXPECT_LE(view.minimumSizeHint().width(), 384) << "with its padding, two thirds of the panes";
    EXPECT_LE(view.minimumSizeHint().height(), 204);
}

TEST_F(PolarPlotViewTest, ValuesStayInPlaceWhenTheirDigitsChange) {
    selectPass();
    view.refresh();
    show({404, 204});
    const QRect before = child<QWidget>(view, "skyAzimuth").geometry();
    const QRect tableBefore = table().geometry();
    for (const double seconds : {-300.0, -60.0, 60.0, 300.0, 3000.0}) {
        goTo(pass.peakTime + seconds);
        view.hide();
        view.show();
        EXPECT_EQ(child<QWidget>(view, "skyAzimuth").geometry(), before);
        EXPECT_EQ(table().geometry(), tableBefore);
    }
}

TEST_F(PolarPlotViewTest, RangeOfTheSunHasRoom) {
    show({404, 204});
    const int usual = table().width();
    const auto sun = std::make_shared<Satellite>("Sun", -1);
    sun->bodyKind = BodyKind::sun;
    state->trackingSatellite = sun;
    view.refresh();
    const auto& range = child<ValueLabel>(view, "skyRange");
    EXPECT_EQ(range.text().size(), 16);
    EXPECT_LE(range.sizeHint().width(), range.width());
    EXPECT_TRUE(view.rect().contains(table().geometry()));
    state->trackingSatellite = nullptr;
    view.refresh();
    EXPECT_EQ(table().width(), usual);
}

TEST_F(PolarPlotViewTest, EveryRowIsReadWithItsNameAndValue) {
    selectPass();
    view.refresh();
    for (const RowName& name : kRowNames) {
        auto& value = child<ValueLabel>(view, name.objectName);
        const QString spoken =
            QAccessible::queryAccessibleInterface(&value)->text(QAccessible::Name);
        EXPECT_EQ(spoken, QString(name.spoken) + ' ' + value.text());
    }
}

}  // namespace
}  // namespace veloran::test
