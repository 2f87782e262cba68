#include "ui/quick_list/satellite_list_view.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QFontMetrics>
#include <QLineEdit>

#include "../ui_fixture.h"
#include "ui/quick_list/preset_selections.h"
#include "ui/quick_list/quick_row_delegate.h"
#include "ui/theme.h"

namespace veloran::test {
namespace {

TEST(QuickColumns, LabelTakesWhatCheckAndFrequencyLeave) {
    const QuickColumns c = quickColumns({0, 100, 400, 36});
    EXPECT_EQ(c.check, QRect(12, 100, 16, 36));
    EXPECT_EQ(c.frequency, QRect(268, 100, 120, 36));
    EXPECT_EQ(c.label, QRect(36, 100, 224, 36));
    EXPECT_EQ(quickColumns({0, 0, 100, 36}).label.width(), 0);
}

TEST(QuickListLook, TellsWhatThereIs) {
    Satellite satellite("RS-44", 44909, {channel("down", 435.64e6), channel("up", 145.9e6)});
    satellite.passes = std::make_shared<const PassList>(PassList{passAt(Instant{0})});
    const QuickListLook look = quickListLook(satellite);
    EXPECT_EQ(look.name, "RS-44");
    EXPECT_EQ(look.norad, "NORAD 44909");
    EXPECT_EQ(look.channels, "2 TX");
    EXPECT_EQ(look.passes, "1 passes");
    EXPECT_EQ(look.frequency, "435.640 MHz");
    EXPECT_EQ(spokenQuickRow(look), "RS-44, NORAD 44909, 2 TX, 1 passes, 435.640 MHz");
}

TEST(QuickListLook, LeavesOutWhatThereIsNot) {
    const QuickListLook look = quickListLook(Satellite("Sun", -1));
    EXPECT_EQ(look.channels, "");
    EXPECT_EQ(look.passes, "");
    EXPECT_EQ(look.frequency, "");
    EXPECT_EQ(spokenQuickRow(look), "Sun, NORAD -1");
}

class SatelliteListViewTest : public UiFixture {
  protected:
    SatellitePtr add(const std::string& name, std::int64_t id, bool selected,
                     std::vector<Transmitter> channels = {}) {
        auto satellite = addSatellite(name, id, {}, std::move(channels));
        satellite->isSelected = selected;
        auto ids = state->selectedSatelliteIds.get();
        if (selected) ids.insert(id);
        state->selectedSatelliteIds = ids;
        return satellite;
    }

    void SetUp() override {
        // Not in the order of names: the list keeps the order of the state.
        station = add("ISS (ZARYA)", 25544, true, {channel("down", 145.8e6)});
        old = add("AO-7", 7530, false, {channel("down", 145.95e6)});
        silent = add("Silent", 400, true);
        other = add("Other", 401, false);
    }

    void open() {
        state->showSatelliteList = true;
        sheet = std::make_unique<SatelliteListView>(state, nullptr);
        sheet->setAttribute(Qt::WA_DeleteOnClose, false);
        sheet->present();
        QTest::qWait(0);
    }

    void press(const char* button) { child<QAbstractButton>(*sheet, button).click(); }
    QListView& rows() { return child<QListView>(*sheet, "quickList"); }
    QModelIndex row(int number) { return rows().model()->index(number, 0); }
    void search(const QString& text) { child<QLineEdit>(*sheet, "searchText").setText(text); }
    std::vector<std::int64_t> shown() {
        std::vector<std::int64_t> ids;
        const auto& model = *sheet->findChild<QuickListModel*>();
        for (int i = 0; i < model.rowCount(); ++i) ids.push_back(model.satellite(i)->id);
        return ids;
    }
    using Ids = std::vector<std::int64_t>;

    SatellitePtr station, old, silent, other;
    std::unique_ptr<SatelliteListView> sheet;
};

TEST_F(SatelliteListViewTest, ShowsAllInTheOrderOfTheState) {
    open();
    EXPECT_EQ(shown(), (Ids{25544, 7530, 400, 401}));
    EXPECT_EQ(textOf(*sheet, "selectedCount"), "2 selected");
}

TEST_F(SatelliteListViewTest, HasTheToldSizeAndTexts) {
    open();
    EXPECT_EQ(sheet->minimumSize(), QSize(350, 400));
    EXPECT_EQ(sheet->windowTitle(), "Satellites");
    EXPECT_EQ(child<QLineEdit>(*sheet, "searchText").placeholderText(),
              "Search name or NORAD ID...");
    QStringList presets;
    for (const char* name : {"presetAmateur", "presetStations", "presetAll", "presetNone"}) {
        presets += child<QAbstractButton>(*sheet, name).text();
    }
    EXPECT_EQ(presets, (QStringList{"Amateur LEO", "Stations", "All", "None"}));
}

TEST_F(SatelliteListViewTest, SearchMatchesNamesInAnyCaseAndNumbers) {
    open();
    search("zArYa");
    EXPECT_EQ(shown(), (Ids{25544}));
    search("40");
    EXPECT_EQ(shown(), (Ids{400, 401}));
    search("75");
    EXPECT_EQ(shown(), (Ids{7530}));
    search("nothing");
    EXPECT_EQ(shown(), Ids{});
    press("clearSearch");
    EXPECT_EQ(shown(), (Ids{25544, 7530, 400, 401}));
}

TEST_F(SatelliteListViewTest, BothGroupPresetsSelectThoseWithAChannel) {
    for (const char* preset : {"presetAmateur", "presetStations"}) {
        silent->isSelected = true;
        old->isSelected = false;
        state->selectedSatelliteIds = std::set<std::int64_t>{25544, 400};
        open();
        press(preset);
        EXPECT_EQ(state->selectedSatelliteIds.get(), (std::set<std::int64_t>{25544, 7530}))
            << preset;
        EXPECT_TRUE(old->isSelected) << preset;
        EXPECT_FALSE(silent->isSelected) << preset;
    }
}

TEST_F(SatelliteListViewTest, AllAndNoneReachBeyondTheSearch) {
    open();
    search("zarya");
    press("presetAll");
    EXPECT_EQ(state->selectedSatelliteIds.get(), (std::set<std::int64_t>{25544, 7530, 400, 401}));
    sheet->refresh();
    EXPECT_EQ(textOf(*sheet, "selectedCount"), "4 selected");
    press("presetNone");
    EXPECT_TRUE(state->selectedSatelliteIds->empty());
    sheet->refresh();
    EXPECT_EQ(textOf(*sheet, "selectedCount"), "0 selected");
}

TEST_F(SatelliteListViewTest, ClickOnCheckOrLabelTogglesAndOnTheFrequencyDoesNot) {
    open();
    const QuickColumns columns = quickColumns(rows().visualRect(row(1)));
    QTest::mouseClick(rows().viewport(), Qt::LeftButton, {}, columns.check.center());
    EXPECT_TRUE(old->isSelected);
    QTest::mouseClick(rows().viewport(), Qt::LeftButton, {}, columns.label.center());
    EXPECT_FALSE(old->isSelected);
    QTest::mouseClick(rows().viewport(), Qt::LeftButton, {}, columns.frequency.center());
    EXPECT_FALSE(old->isSelected);
    QTest::mouseClick(rows().viewport(), Qt::RightButton, {}, columns.check.center());
    EXPECT_FALSE(old->isSelected);
}

TEST_F(SatelliteListViewTest, LabelHasTheRoomOfAMissingFrequency) {
    const auto named = [this](int length) {
        return add(std::string(static_cast<std::size_t>(length), 'W'), 50000 + length, false);
    };
    open();
    const int step = QFontMetrics(Theme::face(12, QFont::Medium)).horizontalAdvance('W');
    const QuickColumns columns = quickColumns(rows().visualRect(row(0)));
    const auto fits = named(columns.label.width() / step + 2);
    const auto isTooLong = named(rows().width());
    sheet->refresh();
    const auto& delegate = *qobject_cast<QuickRowDelegate*>(rows().itemDelegate());
    const auto helpAt = [&](int number) {
        const QRect area = rows().visualRect(row(number));
        return delegate.helpAt(quickColumns(area).frequency.center(), area, row(number));
    };
    EXPECT_EQ(helpAt(4), "") << "shown whole";
    EXPECT_EQ(helpAt(5), qText(isTooLong->name));
    QTest::mouseClick(rows().viewport(), Qt::LeftButton, {},
                      quickColumns(rows().visualRect(row(4))).frequency.center());
    EXPECT_TRUE(fits->isSelected);
}

TEST_F(SatelliteListViewTest, DoubleClickIsTwoClicks) {
    open();
    int changes = 0;
    const auto subscription = old->objectWillChange.subscribe([&changes] { ++changes; });
    const QPoint check = quickColumns(rows().visualRect(row(1))).check.center();
    QTest::mouseClick(rows().viewport(), Qt::LeftButton, {}, check);
    QTest::mouseDClick(rows().viewport(), Qt::LeftButton, {}, check);
    QTest::mouseRelease(rows().viewport(), Qt::LeftButton, {}, check);
    EXPECT_EQ(changes, 2);
    EXPECT_FALSE(old->isSelected);
}

TEST_F(SatelliteListViewTest, SpaceTogglesTheCurrentRow) {
    open();
    rows().setCurrentIndex(row(1));
    QTest::keyClick(&rows(), Qt::Key_Space);
    EXPECT_TRUE(old->isSelected);
    EXPECT_EQ(row(1).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    QTest::keyClick(&rows(), Qt::Key_Down);
    QTest::keyClick(&rows(), Qt::Key_Space);
    EXPECT_FALSE(silent->isSelected);
    EXPECT_EQ(state->selectedSatelliteIds.get(), (std::set<std::int64_t>{25544, 7530}));
}

TEST_F(SatelliteListViewTest, RowSpeaksAndHasACheckMark) {
    open();
    EXPECT_EQ(row(0).data(Qt::AccessibleTextRole), "ISS (ZARYA), NORAD 25544, 1 TX, 145.800 MHz");
    EXPECT_EQ(row(0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_EQ(row(1).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
    EXPECT_TRUE(row(0).flags() & Qt::ItemIsUserCheckable);
}

TEST_F(SatelliteListViewTest, AnyWayOfClosingClearsTheFlag) {
    const std::vector<std::function<void()>> ways{
        [this] { press("closeQuickList"); },
        [this] { QTest::keyClick(sheet.get(), Qt::Key_Escape); },
        [this] { QTest::keyClick(sheet.get(), Qt::Key_Return); }, [this] { sheet->close(); },
        [this] { sheet->accept(); }};
    for (std::size_t i = 0; i < ways.size(); ++i) {
        open();
        ways[i]();
        EXPECT_FALSE(sheet->isVisible()) << i;
        EXPECT_FALSE(state->showSatelliteList) << i;
    }
}

TEST_F(SatelliteListViewTest, ReturnInTheSearchGoesOnToWhatWasFound) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Down}) {
        open();
        sheet->activateWindow();
        auto& line = child<QLineEdit>(*sheet, "searchText");
        search("ao");
        line.setFocus();
        QTest::keyClick(&line, key);
        EXPECT_TRUE(sheet->isVisible());
        EXPECT_TRUE(state->showSatelliteList);
        EXPECT_TRUE(rows().hasFocus());
        EXPECT_EQ(rows().currentIndex(), row(0));
        QTest::keyClick(&rows(), Qt::Key_Space);
        EXPECT_EQ(state->selectedSatelliteIds->contains(7530), old->isSelected.get());
    }
    search("nothing");
    QTest::keyClick(&child<QLineEdit>(*sheet, "searchText"), Qt::Key_Return);
    EXPECT_TRUE(sheet->isVisible());
}

TEST_F(SatelliteListViewTest, EscapeClearsASearchFirst) {
    open();
    for (const char* place : {"searchText", "quickList"}) {
        search("ao");
        QTest::keyClick(&child<QWidget>(*sheet, place), Qt::Key_Escape);
        EXPECT_EQ(child<QLineEdit>(*sheet, "searchText").text(), "") << place;
        EXPECT_TRUE(sheet->isVisible()) << place;
    }
    QTest::keyClick(&child<QWidget>(*sheet, "searchText"), Qt::Key_Escape);
    EXPECT_FALSE(sheet->isVisible());
}

TEST_F(SatelliteListViewTest, NoneLeavesNoSelectionBehindThatHasNoSatellite) {
    state->selectedSatelliteIds = std::set<std::int64_t>{25544, 400, 11111};
    open();
    press("presetNone");
    EXPECT_TRUE(state->selectedSatelliteIds->empty());
    EXPECT_FALSE(station->isSelected);
}

TEST_F(SatelliteListViewTest, ClearingTheFlagClosesIt) {
    open();
    state->showSatelliteList = false;
    sheet->refresh();
    EXPECT_FALSE(sheet->isVisible());
}

TEST_F(SatelliteListViewTest, FollowsAReloadAndKeepsTheSearch) {
    open();
    search("40");
    add("New", 4000, false);
    sheet->refresh();
    EXPECT_EQ(shown(), (Ids{400, 401, 4000}));
}

TEST_F(SatelliteListViewTest, RefreshDrawsRowsOnlyWhenOneInSightChanges) {
    open();
    sheet->refresh();
    struct PaintCounter : QObject {
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint) ++paints;
            return false;
        }
    } counter;
    rows().viewport()->installEventFilter(&counter);
    sheet->refresh();
    QCoreApplication::processEvents();
    EXPECT_EQ(counter.paints, 0);
    old->passes = std::make_shared<const PassList>(PassList{passAt(start)});
    sheet->refresh();
    QCoreApplication::processEvents();
    EXPECT_EQ(counter.paints, 1);
}

TEST_F(SatelliteListViewTest, WholeCatalogueIsRowsOfAModel) {
    std::vector<SatellitePtr> many;
    for (int i = 0; i < 11000; ++i) {
        many.push_back(std::make_shared<Satellite>("SAT " + std::to_string(i), 10000 + i));
    }
    state->satellites = many;
    open();
    EXPECT_EQ(rows().model()->rowCount(), 11000);
    EXPECT_LT(sheet->findChildren<QWidget*>().size(), 60) << "no widget per row";
    search("sat 1099");
    EXPECT_EQ(rows().model()->rowCount(), 11) << "SAT 1099 and SAT 10990 to SAT 10999";
}

}  // namespace
}  // namespace veloran::test
