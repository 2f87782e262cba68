#include "ui/browser/satellite_browser.h"

#include <QAbstractButton>
#include <QDragEnterEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QSplitter>
#include <QTemporaryDir>
#include <QUrl>

#include "browser_world.h"
#include "ui/browser/browser_tree.h"
#include "ui/browser/tracked_list.h"
#include "ui/detail_sheet/satellite_detail_view.h"
#include "ui/import/tle_import_sheet.h"

namespace veloran::test {
namespace {

constexpr const char* kStation =
    "ISS (ZARYA)\n"
    "1 25544U 98067A   26095.54791667  .00016717  00000+0  10270-3 0  9994\n"
    "2 25544  51.6412  10.7412 0002819  32.7451  12.4721 15.50073832123456\n";

constexpr const char* kOther =
    "MYSAT\n"
    "1 99901U 20001A   26001.00000000  .00000000  00000-0  00000-0 0  9990\n"
    "2 99901   0.0500  90.0000 0002000  90.0000 180.0000  1.00270000    15\n";

class SatelliteBrowserTest : public BrowserFixture {
  protected:
    SatelliteBrowser& open() {
        window = std::make_unique<SatelliteBrowser>(state);
        window->show();
        window->activateWindow();
        QCoreApplication::processEvents();
        return *window;
    }

    QAbstractButton& button(const char* name) { return child<QAbstractButton>(*window, name); }
    BrowserModel& model() { return *window->findChild<BrowserModel*>(); }
    BrowserTree& tree() { return *window->findChild<BrowserTree*>(); }
    TrackedList& tracked() { return *window->findChild<TrackedList*>(); }
    QLineEdit& searchLine() { return child<QLineEdit>(*window, "searchText"); }
    QModelIndex heading(const char* key) { return BrowserFixture::heading(model(), key); }
    Selection selection() const { return state->selectedSatelliteIds; }
    void key(const QModelIndex& index, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        tree().setCurrentIndex(index);
        QTest::keyClick(&tree(), key, modifiers);
    }
    void trackAll(const QModelIndex& section) { key(section, Qt::Key_A, Qt::ControlModifier); }
    QStringList trackedNames() {
        QStringList names;
        for (int i = 0; i < tracked().model()->rowCount(); ++i) {
            names += tracked().model()->index(i, 0).data().toString();
        }
        return names;
    }
    bool isImported() const {
        return std::ranges::any_of(state->satellites.get(), [](const SatellitePtr& s) {
            return s->id == 25544 && s->sources.contains("custom");
        });
    }
    /// Lets an import end, on the disk and on the simulated machine.
    template <class Condition>
    bool settle(Condition isDone) {
        return QTest::qWaitFor(
            [&] {
                machine.loop.runPosted();
                return isDone();
            },
            kPatienceMs);
    }

    std::unique_ptr<SatelliteBrowser> window;
};

TEST_F(SatelliteBrowserTest, WithoutSatellitesItSaysWhatItWaitsForAndWhatHasFailed) {
    const auto note = [this] { return child<QLabel>(*window, "browserNote").text(); };
    const std::string url = state->elements().celestrakURL("amateur");
    machine.http.answers[url] = {std::nullopt, 5};
    open();
    EXPECT_FALSE(isShown(*window, "browserNote")) << "there are satellites";
    state->satellites = std::vector<SatellitePtr>{};
    state->loadData();
    machine.loop.runPosted();
    window->refresh();
    EXPECT_TRUE(isShown(*window, "browserNote"));
    EXPECT_EQ(note(), "Waiting for Amateur Radio…");
    machine.loop.advance(6);
    window->refresh();
    EXPECT_EQ(note(),
              "No elements could be had.\nAmateur Radio: no answer\n"
              "Check the network, then press \"Refresh\".");
    EXPECT_EQ(state->statusMessage.get(), "Download failed: no answer");

    machine.http.answers[url] = {kStation};
    state->refreshTLEs();
    machine.loop.advance(6);
    window->refresh();
    EXPECT_FALSE(isShown(*window, "browserNote"));
}

TEST_F(SatelliteBrowserTest, HasTheToldSizes) {
    open();
    EXPECT_EQ(window->windowTitle(), "Satellite Browser");
    EXPECT_EQ(window->size(), QSize(820, 620));
    EXPECT_EQ(window->minimumSize(), QSize(700, 500));
    const auto& panels = child<QSplitter>(*window, "browserPanels");
    EXPECT_EQ(panels.widget(0)->minimumWidth(), 400);
    EXPECT_EQ(panels.widget(1)->minimumWidth(), 220);
    EXPECT_FALSE(panels.childrenCollapsible());
}

TEST_F(SatelliteBrowserTest, CountsAllOfTheCatalogueAndTheTracked) {
    open();
    EXPECT_EQ(textOf(*window, "availableCount"), "5");
    EXPECT_EQ(textOf(*window, "trackedCount"), "(0)");
    EXPECT_FALSE(isShown(*window, "clearTracked")) << "nothing to clear";
    EXPECT_EQ(textOf(*window, "trackedNote"), "These satellites appear on the SkyTrack timeline.");
}

TEST_F(SatelliteBrowserTest, AgeOfTheDownloadHasAColour) {
    open();
    const auto& age = child<ValueLabel>(*window, "elementAge");
    const auto inkAt = [&](double seconds) {
        state->tleAge = seconds;
        window->refresh();
        EXPECT_EQ(age.text(), qText("TLE " + state->tleAgeString()));
        return age.textStyle().ink;
    };
    EXPECT_EQ(inkAt(86399), Ink::green);
    EXPECT_EQ(inkAt(86400), Ink::yellow);
    EXPECT_EQ(inkAt(259199), Ink::yellow);
    EXPECT_EQ(inkAt(259200), Ink::red);
}

TEST_F(SatelliteBrowserTest, TypingNarrowsAndTheCrossWidens) {
    open();
    EXPECT_EQ(searchLine().placeholderText(), "Search name or NORAD ID…");
    searchLine().setText("zarya");
    EXPECT_EQ(keys(model()), (Keys{"amateur", "stations"}));
    EXPECT_EQ(textOf(*window, "availableCount"), "1");
    button("clearSearch").click();
    EXPECT_EQ(textOf(*window, "availableCount"), "5");
}

TEST_F(SatelliteBrowserTest, SearchWithoutAMatchIsAnEmptyList) {
    open();
    searchLine().setText("nothing");
    EXPECT_EQ(model().rowCount(), 0);
    EXPECT_EQ(textOf(*window, "availableCount"), "0");
    tree().enter();
    QTest::keyClick(&tree(), Qt::Key_Space);
    EXPECT_EQ(selection(), Selection{});
}

TEST_F(SatelliteBrowserTest, ToggleIsSeenAtOnceOnBothSides) {
    open();
    refreshedAfter(*window, [this] { key(model().find("amateur", 25544), Qt::Key_Space); });
    EXPECT_EQ(selection(), (Selection{25544}));
    EXPECT_TRUE(station->isSelected);
    EXPECT_EQ(trackedNames(), QStringList("ISS (ZARYA)"));
    EXPECT_EQ(textOf(*window, "trackedCount"), "(1)");
    EXPECT_EQ(model().sectionLook(heading("stations")).selected, 1U);
}

TEST_F(SatelliteBrowserTest, AllAndNoneTakeTheWholeSectionInOneChange) {
    old->isSelected = true;
    state->selectedSatelliteIds = Selection{7530};
    open();
    machine.settings.writes.clear();
    trackAll(heading("amateur"));
    EXPECT_EQ(selection(), (Selection{7530, 25544}));
    EXPECT_EQ(std::ranges::count(machine.settings.writes, "selectedSatIds"), 1);
    window->refresh();
    EXPECT_EQ(trackedNames(), (QStringList{"AO-7", "ISS (ZARYA)"})) << "by name";
    key(heading("stations"), Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(selection(), (Selection{7530}));
    trackAll(heading("uncategorized"));
    EXPECT_EQ(selection(), (Selection{401, 7530}));
}

TEST_F(SatelliteBrowserTest, AllReachesOnlyWhatTheSearchLeaves) {
    open();
    searchLine().setText("ao-7");
    trackAll(heading("amateur"));
    EXPECT_EQ(selection(), (Selection{7530}));
}

TEST_F(SatelliteBrowserTest, ClearEmptiesTheTrackedList) {
    state->toggleSatellites({station, sun});
    open();
    EXPECT_EQ(textOf(*window, "trackedCount"), "(2)");
    EXPECT_TRUE(isShown(*window, "clearTracked"));
    button("clearTracked").click();
    EXPECT_EQ(selection(), Selection{});
    EXPECT_FALSE(sun->isSelected);
    window->refresh();
    EXPECT_FALSE(isShown(*window, "clearTracked"));
    EXPECT_EQ(trackedNames(), QStringList());
}

TEST_F(SatelliteBrowserTest, ClearLeavesNoSelectionBehindThatHasNoSatellite) {
    state->selectedSatelliteIds = Selection{11111, 22222};
    open();
    EXPECT_EQ(textOf(*window, "trackedCount"), "(2)");
    EXPECT_EQ(trackedNames(), QStringList());
    button("clearTracked").click();
    window->refresh();
    EXPECT_EQ(selection(), Selection{});
    EXPECT_EQ(textOf(*window, "trackedCount"), "(0)");

    state->toggleSatellites({station});
    state->selectedSatelliteIds = Selection{11111, 25544};
    window->refresh();
    button("clearTracked").click();
    EXPECT_EQ(selection(), Selection{});
    EXPECT_FALSE(station->isSelected);
}

TEST_F(SatelliteBrowserTest, TypingInTheListGoesToTheSearch) {
    state->toggleSatellites({station, old});
    open();
    tree().setFocus();
    tree().setCurrentIndex(heading("amateur"));
    QTest::keyClick(&tree(), Qt::Key_N);
    ASSERT_TRUE(searchLine().hasFocus());
    QTest::keyClicks(QApplication::focusWidget(), "oaa");
    EXPECT_EQ(searchLine().text(), "noaa");
    EXPECT_EQ(selection(), (Selection{7530, 25544})) << "the favourites stay";

    searchLine().setText("ao");
    QTest::keyClick(&searchLine(), Qt::Key_Return);
    ASSERT_TRUE(tree().hasFocus());
    QTest::keyClick(&tree(), Qt::Key_Minus);
    EXPECT_EQ(searchLine().text(), "ao-") << "it goes on where it was";
    tree().setFocus();
    QTest::keyClick(&tree(), Qt::Key_Backspace);
    EXPECT_EQ(searchLine().text(), "ao");
}

TEST_F(SatelliteBrowserTest, EscapeClearsTheSearch) {
    open();
    searchLine().setText("ao");
    QTest::keyClick(&searchLine(), Qt::Key_Escape);
    EXPECT_EQ(searchLine().text(), "");
    searchLine().setText("ao");
    tree().setFocus();
    QTest::keyClick(&tree(), Qt::Key_Escape);
    EXPECT_EQ(searchLine().text(), "");
    EXPECT_TRUE(window->isVisible());
}

TEST_F(SatelliteBrowserTest, ImportedSatelliteIsRemovedAlone) {
    state->importElements(std::string(kStation) + kOther, {});
    machine.loop.runPosted();
    state->loadData();
    machine.loop.runPosted();
    ASSERT_TRUE(isImported());
    open();
    ASSERT_EQ(ids(model(), "custom"), (Ids{25544, 99901}));
    key(model().find("custom", 25544), Qt::Key_Delete);
    machine.loop.runPosted();
    window->refresh();
    EXPECT_EQ(ids(model(), "custom"), (Ids{99901}));
    EXPECT_FALSE(isImported());
}

TEST_F(SatelliteBrowserTest, CrossOfATrackedRowDeselectsIt) {
    state->toggleSatellites({station, sun});
    open();
    tracked().setCurrentIndex(tracked().model()->index(1, 0));
    QTest::keyClick(&tracked(), Qt::Key_Delete);
    EXPECT_EQ(selection(), (Selection{25544}));
}

TEST_F(SatelliteBrowserTest, ClearOfTheImportedRemovesThemAndLoadsAnew) {
    state->importElements(kStation, {});
    machine.loop.runPosted();
    state->loadData();
    machine.loop.runPosted();
    ASSERT_TRUE(isImported());
    open();
    key(heading("custom"), Qt::Key_Delete, Qt::ControlModifier);
    machine.loop.runPosted();
    EXPECT_FALSE(isImported());
    window->refresh();
    EXPECT_FALSE(heading("custom").isValid());
}

TEST_F(SatelliteBrowserTest, SwitchSubscribesAndLoadsAndTheSelectionStays) {
    state->importElements(kStation, {});
    state->toggleSatellite(station);
    open();
    key(heading("stations"), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(state->subscribedCategories.get(), (std::set<std::string>{"amateur", "stations"}));
    machine.loop.runPosted();
    EXPECT_TRUE(isImported()) << "loaded anew";
    EXPECT_TRUE(selection().contains(25544));
    const auto reloaded = std::ranges::find(state->satellites.get(), 25544,
                                            [](const SatellitePtr& s) { return s->id; });
    ASSERT_NE(*reloaded, station);
    EXPECT_TRUE((*reloaded)->isSelected);
}

TEST_F(SatelliteBrowserTest, SwitchUnsubscribes) {
    open();
    key(heading("amateur"), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(state->subscribedCategories.get(), std::set<std::string>{});
}

TEST_F(SatelliteBrowserTest, RefreshDownloadsEverySubscribedGroup) {
    open();
    EXPECT_EQ(button("refreshTLEs").toolTip(), "Re-download all TLEs from CelesTrak");
    button("refreshTLEs").click();
    machine.loop.runPosted();
    EXPECT_TRUE(std::ranges::any_of(machine.http.requests, [](const std::string& url) {
        return url.find("GROUP=amateur") != std::string::npos;
    }));
}

TEST_F(SatelliteBrowserTest, DetailsOpenASheetOfTheSatellite) {
    open();
    key(model().find("amateur", 7530), Qt::Key_Return);
    auto* sheet = window->findChild<SatelliteDetailView*>();
    ASSERT_NE(sheet, nullptr);
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
    EXPECT_FALSE(sheet->findChildren<ValueLabel*>().isEmpty());
    QTest::keyClick(sheet, Qt::Key_Escape);
    EXPECT_FALSE(sheet->isVisible());
}

TEST_F(SatelliteBrowserTest, ImportOpensOneSheet) {
    open();
    EXPECT_EQ(button("importTLE").toolTip(),
              "Paste or load TLE data for satellites not in CelesTrak");
    button("importTLE").click();
    button("importTLE").click();
    ASSERT_EQ(window->findChildren<TLEImportSheet*>().size(), 1);
    EXPECT_TRUE(window->findChild<TLEImportSheet*>()->isVisible());
}

class DropOnBrowser : public SatelliteBrowserTest {
  protected:
    /// Whether it was taken.
    bool drop(const QMimeData& data) {
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window.get(), &enter);
        QDropEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        event.setAccepted(false);
        QCoreApplication::sendEvent(window.get(), &event);
        EXPECT_EQ(enter.isAccepted(), event.isAccepted());
        return event.isAccepted();
    }
};

TEST_F(DropOnBrowser, FilesAreImportedInTheImportSheet) {
    const QTemporaryDir directory;
    QMimeData data;
    QList<QUrl> urls;
    for (const auto& [name, content] : {std::pair("iss.tle", kStation), {"notes.txt", "none"}}) {
        QFile file(directory.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        urls += QUrl::fromLocalFile(file.fileName());
    }
    data.setUrls(urls);
    open();
    EXPECT_TRUE(drop(data));
    const auto* sheet = window->findChild<TLEImportSheet*>();
    ASSERT_NE(sheet, nullptr);
    ASSERT_TRUE(settle([&] { return !textOf(*sheet, "resultMessage").isEmpty(); }));
    EXPECT_EQ(textOf(*sheet, "resultMessage"),
              "Imported 1 satellite; Error: No valid TLEs found in text (notes.txt)");
    EXPECT_TRUE(settle([this] { return isImported(); }));
}

TEST_F(DropOnBrowser, WhatIsNoFileIsRefused) {
    open();
    QMimeData text;
    text.setText("text");
    EXPECT_FALSE(drop(text));
    QMimeData page;
    page.setUrls({QUrl("https://example.org/iss.tle")});
    EXPECT_FALSE(drop(page));
    EXPECT_EQ(window->findChild<TLEImportSheet*>(), nullptr);
}

TEST_F(SatelliteBrowserTest, SearchFieldHandsTheKeyboardToTheList) {
    for (const Qt::Key way : {Qt::Key_Down, Qt::Key_Return, Qt::Key_Enter}) {
        open();
        EXPECT_TRUE(searchLine().hasFocus());
        QTest::keyClick(&searchLine(), way);
        EXPECT_TRUE(tree().hasFocus());
        EXPECT_EQ(tree().currentIndex(), model().index(0, 0));
        QTest::keyClick(&tree(), Qt::Key_F, Qt::ControlModifier);
        EXPECT_TRUE(searchLine().hasFocus());
    }
}

TEST_F(SatelliteBrowserTest, EveryControlIsReachedByTabAndHasAName) {
    state->toggleSatellite(sun);
    open();
    std::set<QString> names;
    QStringList reached;
    for (QWidget* w = window->nextInFocusChain(); w != window.get(); w = w->nextInFocusChain()) {
        if (!w->isVisible() || !(w->focusPolicy() & Qt::TabFocus) || w->focusProxy()) continue;
        EXPECT_FALSE(w->objectName().isEmpty()) << w->metaObject()->className();
        EXPECT_FALSE(w->accessibleName().isEmpty()) << w->objectName().toStdString();
        EXPECT_TRUE(names.insert(w->accessibleName()).second) << w->objectName().toStdString();
        reached += w->objectName();
    }
    EXPECT_EQ(reached, (QStringList{"searchText", "importTLE", "refreshTLEs", "availableSatellites",
                                    "clearTracked", "trackedSatellites"}));
}

TEST_F(SatelliteBrowserTest, HiddenWindowWaitsForBeingShown) {
    open();
    window->hide();
    refreshedAfter(*window, [this] { state->toggleSatellite(sun); });
    EXPECT_EQ(textOf(*window, "trackedCount"), "(0)");
    window->show();
    EXPECT_EQ(textOf(*window, "trackedCount"), "(1)");
}

TEST_F(SatelliteBrowserTest, WholeCatalogueIsRowsOfAModel) {
    std::vector<SatellitePtr> many;
    for (int i = 0; i < 11000; ++i) {
        auto satellite = std::make_shared<Satellite>("SAT " + std::to_string(i), 10000 + i);
        satellite->sources = {"amateur"};
        many.push_back(satellite);
    }
    state->satellites = many;
    open();
    EXPECT_EQ(model().rowCount(heading("amateur")), 11000);
    EXPECT_LT(window->findChildren<QWidget*>().size(), 60) << "no widget per row";
    trackAll(heading("amateur"));
    EXPECT_EQ(selection().size(), 11000U);
    searchLine().setText("sat 1099");
    EXPECT_EQ(model().rowCount(heading("amateur")), 11) << "SAT 1099 and SAT 10990 to SAT 10999";
}

}  // namespace
}  // namespace veloran::test
