#include "ui/browser/browser_tree.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QScrollBar>

#include "browser_world.h"
#include "ui/browser/browser_row_delegate.h"

namespace veloran::test {
namespace {

class BrowserTreeTest : public BrowserFixture {
  protected:
    void SetUp() override {
        tree.resize(500, 400);
        tree.show();
        QCoreApplication::processEvents();
    }

    QModelIndex heading(const char* key) const { return BrowserFixture::heading(model, key); }
    QModelIndex row(const char* key, std::int64_t id) const { return model.find(key, id); }
    SectionColumns columns(const char* key) const {
        return sectionColumns(tree.visualRect(heading(key)), model.sectionLook(heading(key)));
    }
    SatelliteColumns columns(const QModelIndex& satellite) const {
        return satelliteColumns(tree.visualRect(satellite));
    }
    void click(const QPoint& at, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(tree.viewport(), button, {}, at);
    }
    void key(const QModelIndex& index, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        tree.setCurrentIndex(index);
        QTest::keyClick(&tree, key, modifiers);
    }
    QString help(const QPoint& at) const {
        const auto& delegate = *qobject_cast<BrowserRowDelegate*>(tree.itemDelegate());
        const QModelIndex index = tree.indexAt(at);
        return delegate.helpAt(at, tree.visualRect(index), index);
    }

    QMenu* openedMenu() const {
        const auto menus = tree.findChildren<QMenu*>("browserRowMenu");
        return menus.isEmpty() ? nullptr : menus.back();
    }
    /// As the Menu key does.
    void openMenu(const QModelIndex& index) {
        tree.setCurrentIndex(index);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QCoreApplication::sendEvent(tree.viewport(), &event);
    }
    void closeMenu() {
        openedMenu()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QStringList menuAt(const QModelIndex& index) {
        openMenu(index);
        QStringList texts;
        for (const QAction* action : openedMenu()->actions()) texts << action->text();
        closeMenu();
        return texts;
    }
    void pick(const QModelIndex& index, const QString& text) {
        openMenu(index);
        for (QAction* action : openedMenu()->actions()) {
            if (action->text() == text) action->trigger();
        }
        closeMenu();
    }

    BrowserModel model{state};
    BrowserTree tree{model};
    QSignalSpy toggled{&tree, &BrowserTree::toggled};
    QSignalSpy detailed{&tree, &BrowserTree::detailsRequested};
    QSignalSpy selected{&tree, &BrowserTree::selectionRequested};
    QSignalSpy cleared{&tree, &BrowserTree::clearRequested};
    QSignalSpy removed{&tree, &BrowserTree::removalRequested};
    QSignalSpy subscribed{&tree, &BrowserTree::subscriptionToggled};
};

TEST_F(BrowserTreeTest, StartsWithAmateurAndImportedOpen) {
    EXPECT_TRUE(tree.isExpanded(heading("amateur")));
    EXPECT_TRUE(tree.isExpanded(heading("custom")));
    EXPECT_FALSE(tree.isExpanded(heading("celestial")));
    EXPECT_FALSE(tree.isExpanded(heading("stations")));
    EXPECT_FALSE(tree.isExpanded(heading("uncategorized")));
}

TEST_F(BrowserTreeTest, ClickOnTheTitleOpensAndCloses) {
    click(columns("stations").label.center());
    EXPECT_TRUE(tree.isExpanded(heading("stations")));
    EXPECT_TRUE(tree.expandedCategories().contains("stations"));
    click(columns("stations").chevron.center());
    EXPECT_FALSE(tree.isExpanded(heading("stations")));
    EXPECT_FALSE(tree.expandedCategories().contains("stations"));
}

TEST_F(BrowserTreeTest, DoubleClickOnTheTitleIsTwoClicks) {
    const QSignalSpy opened(&tree, &QTreeView::expanded);
    const QSignalSpy closed(&tree, &QTreeView::collapsed);
    const QPoint at = columns("stations").label.center();
    click(at);
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, at);
    EXPECT_EQ(opened.count(), 1);
    EXPECT_EQ(closed.count(), 1);
}

TEST_F(BrowserTreeTest, ExpansionOutlivesASearchThatHidesTheSection) {
    tree.toggleExpanded(heading("stations"));
    tree.toggleExpanded(heading("amateur"));
    model.setSearch("home");
    EXPECT_FALSE(heading("stations").isValid());
    model.setSearch("");
    EXPECT_TRUE(tree.isExpanded(heading("stations")));
    EXPECT_FALSE(tree.isExpanded(heading("amateur")));
    EXPECT_TRUE(tree.isExpanded(heading("custom")));
}

TEST_F(BrowserTreeTest, ReloadKeepsExpansionCurrentRowAndPlace) {
    for (int i = 0; i < 60; ++i) add("SAT " + std::to_string(100 + i), 1000 + i, {"amateur"});
    model.refresh();
    tree.setCurrentIndex(row("amateur", 1020));
    tree.verticalScrollBar()->setValue(303);
    const QModelIndex topBefore = tree.indexAt({5, 0});
    const auto topId = model.satellite(topBefore)->id;
    const int offset = tree.visualRect(topBefore).top();
    add("AAA first of all", 999, {"amateur"});
    model.refresh();
    const QModelIndex top = tree.indexAt({5, 0});
    EXPECT_EQ(model.satellite(top)->id, topId);
    EXPECT_EQ(tree.visualRect(top).top(), offset);
    EXPECT_EQ(tree.currentIndex(), row("amateur", 1020));
}

TEST_F(BrowserTreeTest, RowsButtonsAskForWhatTheyShow) {
    click(columns(row("amateur", 7530)).checkBox.center());
    ASSERT_EQ(toggled.count(), 1);
    EXPECT_EQ(toggled[0][0].value<SatellitePtr>(), old);
    click(columns(row("amateur", 25544)).details.center());
    ASSERT_EQ(detailed.count(), 1);
    EXPECT_EQ(detailed[0][0].value<SatellitePtr>(), station);
    click(columns(row("amateur", 7530)).name.center());
    click(columns(row("amateur", 7530)).checkBox.center(), Qt::RightButton);
    EXPECT_EQ(toggled.count(), 1);
}

TEST_F(BrowserTreeTest, SectionsButtonsAskForWhatTheyShow) {
    click(columns("amateur").all.center());
    click(columns("custom").none.center());
    ASSERT_EQ(selected.count(), 2);
    EXPECT_EQ(selected[0][0].toModelIndex(), heading("amateur"));
    EXPECT_TRUE(selected[0][1].toBool());
    EXPECT_EQ(selected[1][0].toModelIndex(), heading("custom"));
    EXPECT_FALSE(selected[1][1].toBool());
    click(columns("custom").clear.center());
    EXPECT_EQ(cleared.count(), 1);
    click(columns("stations").subscription.center());
    ASSERT_EQ(subscribed.count(), 1);
    EXPECT_EQ(subscribed[0][0].value<std::string>(), "stations");
}

TEST_F(BrowserTreeTest, ReleaseElsewhereDoesNothing) {
    const SectionColumns c = columns("custom");
    QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, c.clear.center());
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, c.all.center());
    EXPECT_EQ(cleared.count(), 0);
    EXPECT_EQ(selected.count(), 0);
}

TEST_F(BrowserTreeTest, KeysOfASatellite) {
    const QModelIndex satellite = row("amateur", 7530);
    key(satellite, Qt::Key_Space);
    EXPECT_EQ(toggled.count(), 1);
    for (const Qt::Key k : {Qt::Key_Return, Qt::Key_Enter}) key(satellite, k);
    EXPECT_EQ(detailed.count(), 2);
    for (const Qt::Key k : {Qt::Key_A, Qt::Key_S, Qt::Key_Delete}) {
        key(satellite, k, Qt::ControlModifier);
    }
    EXPECT_EQ(selected.count() + subscribed.count() + cleared.count(), 0);
}

TEST_F(BrowserTreeTest, KeysOfASection) {
    key(heading("stations"), Qt::Key_Return);
    EXPECT_TRUE(tree.isExpanded(heading("stations")));
    key(heading("stations"), Qt::Key_Space);
    EXPECT_FALSE(tree.isExpanded(heading("stations")));
    key(heading("stations"), Qt::Key_Right);
    EXPECT_TRUE(tree.expandedCategories().contains("stations"));
    key(heading("stations"), Qt::Key_Left);
    EXPECT_FALSE(tree.expandedCategories().contains("stations"));
    key(heading("stations"), Qt::Key_A, Qt::ControlModifier);
    key(heading("stations"), Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(selected.count(), 2);
    EXPECT_TRUE(selected[0][1].toBool());
    EXPECT_FALSE(selected[1][1].toBool());
}

TEST_F(BrowserTreeTest, LettersAndDigitsAreForTheSearchOnly) {
    QString written;
    QObject::connect(&tree, &BrowserTree::typed,
                     [&written](QKeyEvent& event) { written += event.text(); });
    for (const char* place : {"amateur", "custom"}) {
        for (const QModelIndex& index : {heading(place), model.index(0, 0, heading(place))}) {
            tree.setCurrentIndex(index);
            written.clear();
            QTest::keyClicks(&tree, "noaa ANISq-7+*");
            EXPECT_EQ(written, "noaaANISq-7+*") << place;
            EXPECT_TRUE(tree.isExpanded(heading(place)) || model.isSection(index)) << place;
            tree.setExpanded(heading(place), true);
        }
    }
    EXPECT_EQ(selected.count() + subscribed.count() + cleared.count() + removed.count(), 0);
    EXPECT_EQ(detailed.count(), 0);
    EXPECT_FALSE(tree.isExpanded(heading("stations"))) << "* opens nothing";
}

TEST_F(BrowserTreeTest, KeysReachOnlyTheButtonsThatASectionHas) {
    for (const char* name : {"celestial", "custom", "uncategorized"}) {
        key(heading(name), Qt::Key_S, Qt::ControlModifier);
    }
    EXPECT_EQ(subscribed.count(), 0);
    for (const char* name : {"celestial", "amateur", "uncategorized"}) {
        key(heading(name), Qt::Key_Delete, Qt::ControlModifier);
    }
    EXPECT_EQ(cleared.count(), 0);
    key(heading("amateur"), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(subscribed.count(), 1);
    key(heading("custom"), Qt::Key_Delete);
    EXPECT_EQ(cleared.count(), 0) << "all of them need more than one key";
    key(heading("custom"), Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(cleared.count(), 1);
}

TEST_F(BrowserTreeTest, DeleteRemovesAnImportedSatellite) {
    key(row("custom", 99001), Qt::Key_Delete);
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(removed[0][0].value<SatellitePtr>(), own);
    old->sources.insert("custom");
    key(row("amateur", 7530), Qt::Key_Delete);
    EXPECT_EQ(removed.count(), 1) << "it stands there as one of its group";
}

TEST_F(BrowserTreeTest, MenuTellsWhatARowCanDo) {
    EXPECT_EQ(menuAt(heading("amateur")),
              (QStringList{"Close\tEnter", "Track All\tCtrl+A", "Track None\tCtrl+Shift+A",
                           "Unsubscribe\tCtrl+S"}));
    EXPECT_EQ(menuAt(heading("stations"))[3], "Subscribe\tCtrl+S");
    EXPECT_EQ(menuAt(heading("custom"))[3], "Remove All Imported\tCtrl+Delete");
    EXPECT_EQ(menuAt(row("amateur", 7530)), (QStringList{"Track\tSpace", "Details\tEnter"}));
    old->isSelected = true;
    old->sources.insert("custom");
    EXPECT_EQ(menuAt(row("amateur", 7530)), (QStringList{"Do Not Track\tSpace", "Details\tEnter",
                                                         "Remove Imported Elements\tDelete"}));
}

TEST_F(BrowserTreeTest, MenuDoesWhatItTells) {
    pick(row("custom", 99001), "Remove Imported Elements\tDelete");
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(removed[0][0].value<SatellitePtr>(), own);
    pick(row("amateur", 25544), "Track\tSpace");
    ASSERT_EQ(toggled.count(), 1);
    EXPECT_EQ(toggled[0][0].value<SatellitePtr>(), station);
    pick(heading("amateur"), "Track None\tCtrl+Shift+A");
    ASSERT_EQ(selected.count(), 1);
    EXPECT_FALSE(selected[0][1].toBool());
    pick(heading("stations"), "Subscribe\tCtrl+S");
    ASSERT_EQ(subscribed.count(), 1);
    EXPECT_EQ(subscribed[0][0].value<std::string>(), "stations");
}

TEST_F(BrowserTreeTest, MenuOfARowThatHasGoneDoesNothing) {
    openMenu(row("custom", 99001));
    const QMenu* menu = openedMenu();
    ASSERT_NE(menu, nullptr);
    model.setSearch("iss");
    menu->actions().back()->trigger();
    EXPECT_EQ(removed.count(), 0);
}

TEST_F(BrowserTreeTest, MenuBesideTheRowsDoesNotOpen) {
    tree.resize(500, 800);
    QContextMenuEvent event(QContextMenuEvent::Mouse, {50, 790}, tree.mapToGlobal(QPoint(50, 790)));
    QCoreApplication::sendEvent(tree.viewport(), &event);
    EXPECT_EQ(openedMenu(), nullptr);
}

TEST_F(BrowserTreeTest, HelpTellsWhatIsBelowThePointer) {
    tree.toggleExpanded(heading("stations"));
    EXPECT_EQ(help(columns("amateur").subscription.center()), "Unsubscribe (stop downloading)");
    EXPECT_EQ(help(columns("stations").subscription.center()), "Subscribe (download TLEs)");
    EXPECT_EQ(help(columns("custom").clear.center()), "Remove all imported TLEs");
    EXPECT_EQ(help(columns("amateur").all.center()), "");
    const SatelliteColumns c = columns(row("stations", 25544));
    EXPECT_EQ(help(c.details.center()), "Show satellite details");
    EXPECT_EQ(help(c.age.center()), "TLE epoch age");
    EXPECT_EQ(help(c.name.center()), "") << "shown whole";
}

TEST_F(BrowserTreeTest, HelpTellsANameThatIsCut) {
    const std::string name(200, 'W');
    add(name, 7, {"amateur"});
    model.refresh();
    EXPECT_EQ(help(columns(row("amateur", 7)).name.center()), qText(name));
}

TEST_F(BrowserTreeTest, OnlyRowsInSightThatLookDifferentAreAnnounced) {
    tree.updateVisibleRows();
    QSignalSpy changes(&model, &BrowserModel::dataChanged);
    tree.updateVisibleRows();
    EXPECT_EQ(changes.count(), 0);
    old->transmitters = {channel("down", 29.5e6)};
    stray->transmitters = {channel("down", 29.5e6)};
    tree.updateVisibleRows();
    ASSERT_EQ(changes.count(), 1) << "the other's section is closed";
    EXPECT_EQ(changes[0][0].toModelIndex(), row("amateur", 7530));
}

TEST_F(BrowserTreeTest, ButtonsShowAHandBelowThePointer) {
    QTest::mouseMove(tree.viewport(), columns("amateur").all.center());
    EXPECT_EQ(tree.viewport()->cursor().shape(), Qt::PointingHandCursor);
    QTest::mouseMove(tree.viewport(), columns("amateur").count.center());
    EXPECT_EQ(tree.viewport()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(BrowserTreeTest, EveryRowHasOneHeight) {
    EXPECT_EQ(tree.visualRect(heading("amateur")).height(), browserRowHeight());
    EXPECT_EQ(tree.visualRect(row("amateur", 7530)).height(), browserRowHeight());
}

}  // namespace
}  // namespace veloran::test
