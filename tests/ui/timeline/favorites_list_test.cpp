#include "ui/timeline/favorites_list.h"

#include <QHelpEvent>
#include <QToolTip>

#include "../ui_fixture.h"
#include "ui/timeline/favorite_row_delegate.h"
#include "ui/timeline/favorites_model.h"

namespace veloran::test {
namespace {

TEST(FavoriteColumns, HaveTheirWidthsFromTheRight) {
    const FavoriteColumns c = favoriteColumns({0, 100, 1000, 24});
    EXPECT_EQ(c.dot, QRect(8, 100, 8, 24));
    EXPECT_EQ(c.remove, QRect(977, 100, 15, 24));
    EXPECT_EQ(c.channel, QRect(821, 100, 150, 24));
    EXPECT_EQ(c.passes, QRect(767, 100, 48, 24));
    EXPECT_EQ(c.age, QRect(707, 100, 54, 24));
    EXPECT_EQ(c.sources, QRect(521, 100, 180, 24));
    EXPECT_EQ(c.name, QRect(22, 100, 493, 24));
}

TEST(FavoriteColumns, SourcesGiveWayFirst) {
    const FavoriteColumns narrow = favoriteColumns({0, 0, 530, 24});
    EXPECT_GT(narrow.sources.width(), 0);
    EXPECT_LT(narrow.sources.width(), 180);
    EXPECT_EQ(narrow.name.width(), 110);
    EXPECT_EQ(narrow.channel.width(), 150);
    const FavoriteColumns least = favoriteColumns({0, 0, 436, 24});
    EXPECT_TRUE(least.sources.isEmpty());
    EXPECT_GE(least.name.width(), 110);
    EXPECT_LT(least.name.right(), least.age.left());
    EXPECT_EQ(favoriteColumns({0, 0, 100, 24}).name.width(), 0);
}

class FavoritesListTest : public UiFixture {
  protected:
    void SetUp() override {
        second = addSatellite("RS-44", 44909, {passAt(start + 600), passAt(start + 7000)},
                              {channel("down", 435.64e6), channel("down", 145.8e6)});
        second->sources = {"custom", "amateur"};
        TLEData tle;
        tle.epochYear = 2026;
        tle.epochDays = 316.5;
        second->tle = tle;
        first = addSatellite("AO-7", 7530, {});
        state->selectedSatelliteIds = std::set<std::int64_t>{44909, 7530};
        list.setSatellites(state->selectedSatellites());
        list.refresh();
        list.resize(800, 200);
        list.show();
        QTest::qWait(0);
    }
    FavoriteRowsView& rows() { return child<FavoriteRowsView>(list, "favorites"); }
    FavoritesModel& model() { return *list.findChild<FavoritesModel*>(); }
    QRect rowArea(int row) { return rows().visualRect(model().index(row)); }
    QString helpAt(int row, QRect FavoriteColumns::*column) {
        const FavoriteRowDelegate delegate(model());
        return delegate.helpAt((favoriteColumns(rowArea(row)).*column).center(), rowArea(row), row);
    }

    SatellitePtr first;
    SatellitePtr second;
    FavoritesList list{state};
};

TEST_F(FavoritesListTest, RowsStandInOrderOfNames) {
    ASSERT_EQ(model().rowCount(), 2);
    EXPECT_EQ(model().satellite(0), first);
    EXPECT_EQ(model().satellite(1), second);
}

TEST_F(FavoritesListTest, RowShowsWhatIsKnown) {
    const FavoriteLook look = model().look(1);
    EXPECT_EQ(look.name, "RS-44");
    EXPECT_EQ(look.color, SatelliteColorPalette::color(44909));
    EXPECT_EQ(look.sources, "amateur · Custom");
    EXPECT_EQ(look.sourcesHelp, "amateur, custom");
    EXPECT_EQ(look.age, second->tle->ageString(start));
    EXPECT_EQ(look.ageInk, (Tint{Ink::yellow, 0.8}));
    EXPECT_EQ(look.passes, "2");
    EXPECT_EQ(look.passesHelp, "2 upcoming passes in the prediction window");
    EXPECT_EQ(look.channel, "435.640 MHz") << "the first channel";
}

TEST_F(FavoritesListTest, RowWithNothingToShowIsEmptyButForTheAge) {
    const FavoriteLook look = model().look(0);
    EXPECT_EQ(look.sources, "");
    EXPECT_EQ(look.age, "?");
    EXPECT_EQ(look.ageInk, (Tint{Ink::red, 0.8}));
    EXPECT_EQ(look.passes, "");
    EXPECT_EQ(look.channel, "");
    EXPECT_EQ(spokenFavorite(look), "AO-7, elements ? old");
}

TEST_F(FavoritesListTest, OwnSourceShowsUnderItsName) {
    auto store = state->userSources();
    ASSERT_TRUE(store.add({UniqueId::make().text(), "My List/Test", "https://example.org/a"}));
    second->sources = {"user:My_List_Test", "user:Gone_One"};
    EXPECT_EQ(model().look(1).sources, "Gone One · My List/Test");
}

TEST_F(FavoritesListTest, ClickOnTheCrossRemovesTheRow) {
    const QRect cross = favoriteColumns(rowArea(1)).remove;
    QTest::mouseClick(rows().viewport(), Qt::LeftButton, {}, cross.center());
    EXPECT_FALSE(second->isSelected);
    EXPECT_TRUE(first->isSelected);
    EXPECT_EQ(state->selectedSatelliteIds.get(), std::set<std::int64_t>{7530});
}

TEST_F(FavoritesListTest, ClickElsewhereRemovesNothing) {
    QTest::mouseClick(rows().viewport(), Qt::LeftButton, {},
                      favoriteColumns(rowArea(1)).name.center());
    QTest::mousePress(rows().viewport(), Qt::LeftButton, {},
                      favoriteColumns(rowArea(1)).channel.center());
    QTest::mouseRelease(rows().viewport(), Qt::LeftButton, {},
                        favoriteColumns(rowArea(1)).remove.center());
    EXPECT_EQ(state->selectedSatelliteIds->size(), 2u);
}

TEST_F(FavoritesListTest, DeleteRemovesTheCurrentRow) {
    rows().setCurrentIndex(model().index(0));
    QTest::keyClick(&rows(), Qt::Key_Delete);
    EXPECT_FALSE(first->isSelected);
    EXPECT_TRUE(second->isSelected);
}

TEST_F(FavoritesListTest, EachColumnHasItsHelp) {
    EXPECT_EQ(helpAt(1, &FavoriteColumns::sources), "amateur, custom");
    EXPECT_EQ(helpAt(1, &FavoriteColumns::age), "TLE epoch age");
    EXPECT_EQ(helpAt(1, &FavoriteColumns::passes), "2 upcoming passes in the prediction window");
    EXPECT_EQ(helpAt(1, &FavoriteColumns::remove), "Remove from favorites");
    EXPECT_EQ(helpAt(1, &FavoriteColumns::channel), "");
    EXPECT_EQ(helpAt(0, &FavoriteColumns::passes), "");
}

TEST_F(FavoritesListTest, NameThatIsCutShowsWhole) {
    EXPECT_EQ(helpAt(1, &FavoriteColumns::name), "");
    second->name = std::string(200, 'X');
    EXPECT_EQ(helpAt(1, &FavoriteColumns::name), QString(200, 'X'));
}

TEST_F(FavoritesListTest, RowsAreNotMadeAnewByNewPasses) {
    QSignalSpy resets(&model(), &QAbstractItemModel::modelReset);
    list.setSatellites(state->selectedSatellites());
    EXPECT_EQ(resets.count(), 0);
    first->isSelected = false;
    list.setSatellites(state->selectedSatellites());
    EXPECT_EQ(resets.count(), 1);
}

TEST_F(FavoritesListTest, RowTellsAScreenReaderWhatItShows) {
    const QString spoken = model().index(1).data(Qt::AccessibleTextRole).toString();
    EXPECT_TRUE(spoken.startsWith("RS-44, from amateur · Custom, elements "))
        << spoken.toStdString();
    EXPECT_TRUE(spoken.endsWith(" old, 2 upcoming passes in the prediction window, 435.640 MHz"))
        << spoken.toStdString();
}

TEST_F(FavoritesListTest, HeightSharesTheRoomWithTheTimeline) {
    const int row = FavoriteRowDelegate::rowHeight();
    const int all = list.heightIn(1000, 148);
    EXPECT_EQ(list.heightIn(2000, 148), all) << "no more than it needs";
    const int header = all - 2 * row;
    EXPECT_EQ(list.heightIn(148 + header - 1, 148), 0) << "not even the header fits";
    EXPECT_EQ(list.heightIn(148 + header, 148), header);
    EXPECT_EQ(list.heightIn(148 + header + row, 148), header + row);
}

}  // namespace
}  // namespace veloran::test
