#include "ui/pass_list/pass_list_view.h"

#include <QApplication>
#include <QScrollBar>
#include <algorithm>

#include "../ui_fixture.h"
#include "ui/pass_list/pass_list_model.h"
#include "ui/pass_list/pass_rows_view.h"
#include "ui/theme.h"

namespace veloran::test {
namespace {

class PassListViewTest : public UiFixture {
  protected:
    void SetUp() override {
        for (int i = 0; i < 30; ++i) passes.push_back(passAt(start + 100 + i * 1000.0));
        satellite = addSatellite("RS-44", 44909, passes,
                                 {channel("down", 435.64e6), channel("up", 145.95e6)});
        view.refresh();
        view.resize(600, 300);
        view.show();
        QTest::qWait(0);
    }

    PassRowsView& rows() { return child<PassRowsView>(view, "passList"); }
    PassListModel& passModel() { return *view.findChild<PassListModel*>(); }
    QModelIndex row(int index) { return rows().model()->index(index, 0); }
    void click(int index) {
        QTest::mouseClick(rows().viewport(), Qt::LeftButton, {},
                          rows().visualRect(row(index)).center());
    }
    /// The same passes, as a later computation finds them: without the first ones, and each a bit
    /// off.
    void computeAnew(int gone) {
        PassList later(passes.begin() + gone, passes.end());
        for (PredictedPass& pass : later) pass.riseTime = pass.riseTime + 0.25;
        satellite->passes = std::make_shared<const PassList>(later);
        view.refresh();
        QTest::qWait(0);
    }

    PassList passes;
    SatellitePtr satellite;
    PassListView view{state};
};

TEST_F(PassListViewTest, HeaderCountsTheRows) {
    EXPECT_EQ(textOf(view, "passCount"), "30 upcoming");
    EXPECT_EQ(rows().model()->rowCount(), 30);
}

TEST_F(PassListViewTest, WithoutSatellitesTheListIsEmpty) {
    state->satellites = std::vector<SatellitePtr>{};
    view.refresh();
    EXPECT_EQ(textOf(view, "passCount"), "0 upcoming");
    EXPECT_EQ(rows().model()->rowCount(), 0);
}

TEST_F(PassListViewTest, ClickSelectsThePassAndAChannelAndStartsNothing) {
    click(1);
    ASSERT_TRUE(state->selectedPass->has_value());
    const PassInfo& pass = **state->selectedPass;
    EXPECT_EQ(pass.satellite, satellite);
    EXPECT_EQ(pass.pass.riseTime, passes[1].riseTime);
    EXPECT_EQ(pass.transmitter, satellite->transmitters[0]);
    EXPECT_EQ(state->selectedTransmitter.get(), satellite->transmitters[0]);
    EXPECT_FALSE(state->isTracking);
    EXPECT_TRUE(machine.tcp.connections.empty());
}

TEST_F(PassListViewTest, ClickTakesTheChannelLastWorked) {
    satellite->transmitters = {channel("down", 145.8e6), channel("down", 435.64e6)};
    machine.settings.set(SatellitePreferences::lastTxKey(44909), 435.6404e6);
    click(0);
    EXPECT_EQ(state->selectedTransmitter.get(), satellite->transmitters[1]);
}

TEST_F(PassListViewTest, KeyboardPicksLikeAClick) {
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        rows().setCurrentIndex(row(0));
        state->selectedPass = std::nullopt;
        QTest::keyClick(&rows(), Qt::Key_Down);
        QTest::keyClick(&rows(), Qt::Key_Down);
        EXPECT_FALSE(state->selectedPass->has_value()) << "moving selects nothing";
        QTest::keyClick(&rows(), key);
        ASSERT_TRUE(state->selectedPass->has_value());
        EXPECT_EQ((*state->selectedPass)->pass.riseTime, passes[2].riseTime);
    }
}

TEST_F(PassListViewTest, PlaceAndCurrentRowStayWhenPassesAreComputedAnew) {
    rows().setCurrentIndex(row(12));
    rows().verticalScrollBar()->setValue(10 * 75 + 20);
    computeAnew(3);
    EXPECT_EQ(rows().currentIndex().row(), 9);
    EXPECT_EQ(rows().verticalScrollBar()->value(), 7 * 75 + 20);
}

TEST_F(PassListViewTest, PassUnderWayKeepsItsRowThoughItsRiseMoves) {
    addSatellite("AO-7", 7530, {passAt(start - 400, 1200)});
    view.refresh();
    rows().setCurrentIndex(row(0));
    machine.loop.jumpClock(300);
    state->satellites->back()->passes =
        std::make_shared<const PassList>(PassList{passAt(start + 300, 500)});
    view.refresh();
    QTest::qWait(0);
    const int place = rows().currentIndex().row();
    EXPECT_EQ(place, 1) << "it now rises after the first of the other satellite";
    EXPECT_TRUE(row(place).data().toString() == "AO-7");
}

TEST_F(PassListViewTest, PlaceStaysWhenTheSatelliteOfItsRowIsDeselected) {
    const auto other = addSatellite("AO-7", 7530, {passAt(start + 10 * 1000.0 + 600)});
    view.refresh();
    rows().setCurrentIndex(row(11));
    ASSERT_EQ(row(11).data().toString(), "AO-7");
    rows().verticalScrollBar()->setValue(11 * 75 + 20);
    other->isSelected = false;
    view.refresh();
    QTest::qWait(0);
    EXPECT_EQ(rows().verticalScrollBar()->value(), 11 * 75 + 20);
    EXPECT_EQ(rows().currentIndex().row(), 11) << "the row that is there now";
}

TEST_F(PassListViewTest, PlaceStaysWithinAListThatShrinks) {
    rows().setCurrentIndex(row(29));
    rows().verticalScrollBar()->setValue(rows().verticalScrollBar()->maximum());
    addSatellite("AO-7", 7530, {passAt(start + 50), passAt(start + 6050)});
    satellite->isSelected = false;
    view.refresh();
    QTest::qWait(0);
    EXPECT_EQ(rows().currentIndex().row(), 1);
    EXPECT_EQ(rows().verticalScrollBar()->value(), rows().verticalScrollBar()->maximum());
}

TEST_F(PassListViewTest, OnlyRowsThatLookDifferentAreDrawnAgain) {
    QSignalSpy changed(rows().model(), &QAbstractItemModel::dataChanged);
    const auto changedRows = [&] {
        std::vector<int> list;
        for (const auto& signal : changed) list.push_back(signal[0].toModelIndex().row());
        changed.clear();
        return list;
    };
    click(1);
    view.refresh();
    EXPECT_EQ(changedRows(), (std::vector{1})) << "newly selected";
    click(2);
    view.refresh();
    EXPECT_EQ(changedRows(), (std::vector{1, 2})) << "the old one and the new one";
    passModel().updateTimes();
    EXPECT_EQ(changedRows(), std::vector<int>{}) << "no time has passed";
    machine.loop.jumpClock(30);  // from "in 1m" at 100 s ahead, in whole minutes
    passModel().updateTimes();
    const auto later = changedRows();
    EXPECT_EQ(std::ranges::count(later, 0), 0) << "70 s ahead still reads \"in 1m\"";
    EXPECT_EQ(std::ranges::count(later, 1), 1) << "1070 s ahead no longer reads \"in 18m\"";
}

TEST_F(PassListViewTest, RowsFollowTheClockEverySecond) {
    QSignalSpy changed(rows().model(), &QAbstractItemModel::dataChanged);
    machine.loop.jumpClock(150);
    machine.loop.advance(1);
    ASSERT_FALSE(changed.empty()) << "the first pass has risen";
    EXPECT_EQ(changed[0][0].toModelIndex().row(), 0);
}

TEST_F(PassListViewTest, ClockIsFollowedOnlyWhileTheListIsSeen) {
    const auto* everySecond = view.findChild<SecondTimer*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_NE(everySecond, nullptr);
    EXPECT_TRUE(everySecond->isActive());
    view.hide();
    EXPECT_FALSE(everySecond->isActive());
    machine.loop.jumpClock(150);
    view.show();
    EXPECT_TRUE(everySecond->isActive());
    EXPECT_TRUE(row(0).data(Qt::AccessibleTextRole).toString().contains(", now,"))
        << "it is right from the first moment";
}

TEST_F(PassListViewTest, PassesOfALongSearchAreShownWhenItIsDone) {
    QSignalSpy resets(rows().model(), &QAbstractItemModel::modelReset);
    state->passProgress = 0.5;
    satellite->passes = std::make_shared<const PassList>(PassList{passAt(start + 60)});
    view.refresh();
    EXPECT_EQ(resets.count(), 0);
    EXPECT_EQ(textOf(view, "passCount"), "30 upcoming");
    addSatellite("AO-7", 7530, {passAt(start + 90)});
    view.refresh();
    EXPECT_EQ(resets.count(), 1) << "another favourite is shown at once";
    state->passProgress = std::nullopt;
    view.refresh();
    EXPECT_EQ(textOf(view, "passCount"), "2 upcoming");
}

TEST_F(PassListViewTest, ListThatShowsItsBeginningGoesOnShowingIt) {
    computeAnew(3);
    EXPECT_EQ(rows().verticalScrollBar()->value(), 0);
}

TEST_F(PassListViewTest, RowsAreNotMadeAnewByTicks) {
    QSignalSpy resets(rows().model(), &QAbstractItemModel::modelReset);
    for (int i = 0; i < 10; ++i) {
        state->currentAzimuth = i;
        view.refresh();
    }
    EXPECT_EQ(resets.count(), 0);
}

TEST_F(PassListViewTest, SelectedRowIsTinted) {
    const auto ground = [this](int index) {
        QTest::qWait(0);
        const QRect place = rows().visualRect(row(index));
        return rows().viewport()->grab().toImage().pixelColor(place.center().x(), place.top() + 4);
    };
    const QColor plain = Theme::color(Ink::control);
    EXPECT_EQ(ground(1), plain);
    EXPECT_EQ(ground(0), blended(Theme::color(Ink::orange, 0.06), plain)) << "the next pass";
    click(1);
    view.refresh();
    EXPECT_EQ(ground(1), blended(Theme::color(Ink::blue, 0.15), plain));
}

TEST_F(PassListViewTest, RowTellsAScreenReaderWhatItShows) {
    const QString spoken = row(0).data(Qt::AccessibleTextRole).toString();
    EXPECT_TRUE(spoken.startsWith("RS-44, rises ")) << spoken.toStdString();
    EXPECT_TRUE(spoken.contains("in 1m")) << spoken.toStdString();
    machine.loop.jumpClock(200);
    passModel().updateTimes();
    EXPECT_TRUE(row(0).data(Qt::AccessibleTextRole).toString().contains("now"));
}

}  // namespace
}  // namespace veloran::test
