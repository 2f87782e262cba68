#include "ui/timeline/sky_track_view.h"

#include <QListView>

#include "../ui_fixture.h"
#include "support/processor_time.h"
#include "ui/timeline/favorite_row_delegate.h"
#include "ui/timeline/favorites_list.h"
#include "ui/timeline/timeline_canvas.h"
#include "ui/widgets/mini_button.h"

namespace veloran::test {
namespace {

class SkyTrackViewTest : public UiFixture {
  protected:
    void SetUp() override {
        for (int i = 0; i < 20; ++i) {
            addSatellite("SAT-" + std::to_string(10 + i), 100 + i,
                         {passAt(start + 600 + i * 60.0)});
        }
        state->selectedSatelliteIds = idsOfAll();
        state->timelineHoursVisible = 12;
        view.resize(1000, 700);
        view.show();
        refresh();
    }
    std::set<std::int64_t> idsOfAll() const {
        std::set<std::int64_t> ids;
        for (const auto& satellite : state->satellites.get()) ids.insert(satellite->id);
        return ids;
    }
    void refresh() {
        view.refresh();
        QTest::qWait(0);
    }
    void deselectEverything() {
        click("clearFavorites");
        refresh();
    }
    void click(const char* name) { QTest::mouseClick(&child<QWidget>(view, name), Qt::LeftButton); }
    TimelineCanvas& canvas() { return child<TimelineCanvas>(view, "timeline"); }
    QListView& rows() { return child<QListView>(view, "favorites"); }
    MiniButton& toggle() { return child<MiniButton>(view, "favoritesToggle"); }

    SkyTrackView view{state};
};

TEST_F(SkyTrackViewTest, HeaderShowsCountAndSpan) {
    EXPECT_EQ(toggle().remark(), "(20)");
    EXPECT_EQ(textOf(view, "timelineHours"), "12h");
    EXPECT_EQ(textOf(view, "favoritesListCount"), "(20)");
    state->timelineHoursVisible = 9.6;
    refresh();
    EXPECT_EQ(textOf(view, "timelineHours"), "10h");
}

TEST_F(SkyTrackViewTest, CountIsThatOfTheIdsAlsoOfBodiesThatAreNotKnown) {
    auto ids = idsOfAll();
    ids.insert(99999);
    state->selectedSatelliteIds = ids;
    refresh();
    EXPECT_EQ(toggle().remark(), "(21)");
    EXPECT_EQ(rows().model()->rowCount(), 20);
}

TEST_F(SkyTrackViewTest, ButtonsZoomAndScroll) {
    click("timelineZoomIn");
    EXPECT_EQ(state->timelineHoursVisible.get(), 11);
    click("timelineZoomOut");
    click("timelineZoomOut");
    EXPECT_EQ(state->timelineHoursVisible.get(), 13);
    click("scrollToNow");
    EXPECT_EQ(state->timelineStartTime.get(), start - 13 * 0.25 * 3600);
}

TEST_F(SkyTrackViewTest, ToggleHidesTheFavoritesAndIsRemembered) {
    EXPECT_TRUE(rows().isVisible());
    EXPECT_EQ(toggle().symbol(), Symbol::chevronDownDisc);
    EXPECT_EQ(toggle().toolTip(), "Show / hide the favorites list");
    click("favoritesToggle");
    EXPECT_FALSE(rows().isVisible());
    EXPECT_EQ(toggle().symbol(), Symbol::chevronRightDisc);
    EXPECT_EQ(canvas().geometry().bottom(), view.rect().bottom()) << "it takes the room";
    EXPECT_EQ(machine.settings.value("skyTrackShowFavorites"), SettingValue(false));
    SkyTrackView later(state);
    EXPECT_EQ(child<MiniButton>(later, "favoritesToggle").symbol(), Symbol::chevronRightDisc);
    click("favoritesToggle");
    EXPECT_TRUE(rows().isVisible());
    EXPECT_EQ(machine.settings.value("skyTrackShowFavorites"), SettingValue(true));
}

TEST_F(SkyTrackViewTest, StoredValueOfAnotherKindShowsTheFavorites) {
    machine.settings.set("skyTrackShowFavorites", std::string("no"));
    SkyTrackView later(state);
    EXPECT_EQ(child<MiniButton>(later, "favoritesToggle").symbol(), Symbol::chevronDownDisc);
}

TEST_F(SkyTrackViewTest, BothButtonsAskForTheBrowser) {
    QSignalSpy asked(&view, &SkyTrackView::browserRequested);
    click("addFavorites");
    EXPECT_EQ(asked.count(), 1);
    deselectEverything();
    click("openBrowser");
    EXPECT_EQ(asked.count(), 2);
    EXPECT_EQ(child<QWidget>(view, "addFavorites").toolTip(),
              "Open the Satellite Browser (Ctrl+B) to add or remove favorites");
}

TEST_F(SkyTrackViewTest, ClearTakesAllOutAndTheHintShows) {
    EXPECT_FALSE(isShown(view, "emptyFavoritesHint"));
    EXPECT_EQ(child<QWidget>(view, "clearFavorites").toolTip(),
              "Remove all satellites from the favorites list");
    deselectEverything();
    EXPECT_TRUE(state->selectedSatelliteIds->empty());
    for (const auto& satellite : state->satellites.get()) EXPECT_FALSE(satellite->isSelected);
    EXPECT_EQ(machine.settings.value("selectedSatIds"), SettingValue(std::vector<std::int64_t>{}));
    EXPECT_TRUE(isShown(view, "emptyFavoritesHint"));
    EXPECT_FALSE(isShown(view, "favorites"));
    EXPECT_FALSE(isShown(view, "clearFavorites"));
    EXPECT_TRUE(canvas().accessibleDescription().startsWith("0 passes shown."));
}

TEST_F(SkyTrackViewTest, FavoritesTakeNoMoreThanTheyNeedAndAtMostTwoHundredSeventy) {
    view.resize(1000, 1200);
    EXPECT_EQ(rows().height(), 270);
    for (int i = 3; i < 20; ++i)
        (*state->satellites)[static_cast<std::size_t>(i)]->isSelected = false;
    refresh();
    EXPECT_EQ(rows().height(), 3 * FavoriteRowDelegate::rowHeight());
}

TEST_F(SkyTrackViewTest, FavoritesGiveWayWhereTheViewIsLow) {
    const int row = FavoriteRowDelegate::rowHeight();
    view.resize(450, 290);
    EXPECT_GE(rows().height(), 2 * row);
    EXPECT_GE(canvas().height(), TimelineCanvas::kLeastHeight);
    for (const int height : {250, 230, 210, 190}) {
        view.resize(450, height);
        EXPECT_GE(canvas().height(), TimelineCanvas::kLeastHeight) << height;
    }
    view.resize(450, 150);
    EXPECT_FALSE(rows().isVisible());
    EXPECT_EQ(canvas().geometry().bottom(), view.rect().bottom());
    view.resize(450, 500);
    EXPECT_TRUE(rows().isVisible()) << "with room it is back";
}

TEST_F(SkyTrackViewTest, HeaderFitsTheLeastWidth) {
    view.resize(450, 300);
    state->timelineHoursVisible = 48;
    refresh();
    const auto& last = child<QWidget>(view, "timelineZoomOut");
    EXPECT_LE(last.mapTo(&view, last.rect().bottomRight()).x(), 450 - 8);
    EXPECT_GE(toggle().width(), toggle().sizeHint().width());
}

TEST_F(SkyTrackViewTest, NewPassesAreShownAndTicksCostNothing) {
    view.grab();
    const int drawn = canvas().archDrawings();
    for (int i = 0; i < 20; ++i) {
        state->currentAzimuth = i;
        refresh();
    }
    view.grab();
    EXPECT_EQ(canvas().archDrawings(), drawn);
    state->satellites->front()->passes =
        std::make_shared<const PassList>(PassList{passAt(start + 60), passAt(start + 7000)});
    refresh();
    view.grab();
    EXPECT_GT(canvas().archDrawings(), drawn);
    EXPECT_TRUE(canvas().accessibleDescription().startsWith("21 passes shown. Next: SAT-10"))
        << canvas().accessibleDescription().toStdString();
}

TEST_F(SkyTrackViewTest, PassesOfALongSearchAreShownWhenItIsDone) {
    state->passProgress = 0.5;
    state->satellites->front()->passes =
        std::make_shared<const PassList>(PassList{passAt(start + 60), passAt(start + 7000)});
    refresh();
    EXPECT_TRUE(canvas().accessibleDescription().startsWith("20 passes"));
    state->passProgress = std::nullopt;
    refresh();
    EXPECT_TRUE(canvas().accessibleDescription().startsWith("21 passes"));
}

TEST_F(SkyTrackViewTest, ChannelsThatCameLaterAreShown) {
    QSignalSpy changed(rows().model(), &QAbstractItemModel::dataChanged);
    state->satellites->front()->transmitters = {channel("down", 145.8e6)};
    refresh();
    ASSERT_EQ(changed.count(), 1);
    EXPECT_TRUE(rows()
                    .model()
                    ->index(0, 0)
                    .data(Qt::AccessibleTextRole)
                    .toString()
                    .contains("145.800 MHz"));
    refresh();
    EXPECT_EQ(changed.count(), 1) << "once";
}

TEST_F(SkyTrackViewTest, RefreshWithThousandsOfFavoritesFitsManyTimesIntoAFrame) {
    std::vector<SatellitePtr> many;
    for (int i = 0; i < 11000; ++i) {
        auto satellite = std::make_shared<Satellite>("S" + std::to_string(i), 1000 + i);
        satellite->isSelected = true;
        satellite->passes =
            std::make_shared<const PassList>(PassList{passAt(start + i, 600, 45, 0)});
        many.push_back(satellite);
    }
    state->satellites = many;
    view.refresh();
    const double begin = threadProcessorSeconds();
    for (int i = 0; i < 60; ++i) view.refresh();
    EXPECT_LT(threadProcessorSeconds() - begin, 60 * 0.016 / 2) << "a second's refreshes";
}

}  // namespace
}  // namespace veloran::test
