#include "ui/main_window.h"

#include <QAction>
#include <QMenuBar>
#include <QSplitter>

#include "ui/detail/detail_panel.h"
#include "ui/pass_list/pass_list_view.h"
#include "ui/theme.h"
#include "ui_fixture.h"

namespace veloran::test {
namespace {

class MainWindowTest : public UiFixture {
  protected:
    void showWindow() {
        window.show();
        ASSERT_TRUE(QTest::qWaitFor([this] { return state->isLoadingTLEs.get(); }));
    }
    QAction& action(const char* name) {
        auto* found = window.findChild<QAction*>(name);
        if (!found) throw std::runtime_error(name);
        return *found;
    }

    MainWindow window{state};
};

TEST_F(MainWindowTest, FirstAppearanceSetsTheTimelineAndLoads) {
    EXPECT_FALSE(state->isLoadingTLEs);
    showWindow();
    EXPECT_EQ(state->timelineStartTime.get(), start - 12 * 0.1 * 3600);
    machine.loop.runPosted();
    EXPECT_FALSE(machine.http.requests.empty());
}

TEST_F(MainWindowTest, SecondAppearanceLoadsNothing) {
    showWindow();
    state->timelineStartTime = start;
    window.hide();
    window.show();
    window.repaint();
    QTest::qWait(0);
    EXPECT_EQ(state->timelineStartTime.get(), start);
}

TEST_F(MainWindowTest, SizesAreThoseOfTheDesign) {
    EXPECT_EQ(window.size(), QSize(1200, 800));
    EXPECT_EQ(window.minimumSize(), QSize(1050, 700));
    showWindow();
    window.resize(1050, 700);
    QTest::qWait(0);
    EXPECT_EQ(window.size(), QSize(1050, 700)) << "the content fits the smallest window";
    const auto* panel = window.findChild<DetailPanel*>();
    EXPECT_EQ(panel->height(), 240);
    EXPECT_EQ(panel->width(), 1050);
    EXPECT_GE(window.findChild<PassListView*>()->height(), 120);
}

TEST_F(MainWindowTest, MenusHoldTheirEntriesAndShortcuts) {
    QStringList titles;
    for (const QAction* menu : window.menuBar()->actions()) titles << menu->text().remove('&');
    EXPECT_EQ(titles, (QStringList{"File", "Tracking", "Help"}));
    EXPECT_EQ(action("startTrackingAction").text(), "Start Tracking");
    EXPECT_EQ(action("startTrackingAction").shortcut(), QKeySequence("Ctrl+T"));
    EXPECT_EQ(action("stopTrackingAction").text(), "Stop Tracking");
    EXPECT_EQ(action("stopTrackingAction").shortcut(), QKeySequence("Ctrl+Shift+T"));
    EXPECT_EQ(action("refreshPassesAction").text(), "Refresh TLEs && Passes");
    EXPECT_EQ(action("refreshPassesAction").shortcut(), QKeySequence("Ctrl+R"));
    EXPECT_EQ(action("quitAction").shortcut(), QKeySequence("Ctrl+Q"));
}

TEST_F(MainWindowTest, StartNeedsAPassAndStopASession) {
    const auto satellite = addSatellite("ISS", 25544, {passAt(start)}, {channel("down", 145.8e6)});
    refreshedAfter(window, [&] { state->selectedTransmitter = satellite->transmitters[0]; });
    EXPECT_FALSE(action("startTrackingAction").isEnabled()) << "a channel alone is not enough";
    EXPECT_FALSE(action("stopTrackingAction").isEnabled());

    refreshedAfter(window, [&] { select(satellite, satellite->transmitters[0]); });
    EXPECT_TRUE(action("startTrackingAction").isEnabled());
    refreshedAfter(window, [&] { action("startTrackingAction").trigger(); });
    EXPECT_TRUE(state->isTracking);
    EXPECT_EQ(state->trackingSatellite.get(), satellite);
    EXPECT_TRUE(action("stopTrackingAction").isEnabled());
    refreshedAfter(window, [&] { action("stopTrackingAction").trigger(); });
    EXPECT_FALSE(state->isTracking);
    EXPECT_FALSE(action("stopTrackingAction").isEnabled());
}

TEST_F(MainWindowTest, ClosingDoesNotEndTheSession) {
    const auto satellite = addSatellite("ISS", 25544, {passAt(start)}, {channel("down", 145.8e6)});
    showWindow();
    state->startTracking(satellite, std::nullopt);
    window.close();
    EXPECT_TRUE(state->isTracking);
}

TEST_F(MainWindowTest, EveryControlIsReachedByTheTabKeyAndHasAName) {
    const auto satellite = addSatellite("RS-44", 44909, {passAt(start)},
                                        {channel("down", 435.64e6), channel("up", 145.95e6)});
    select(satellite, satellite->transmitters[0]);
    state->startTracking(satellite, satellite->transmitters[0]);
    showWindow();
    refreshedAfter(window, [&] { state->currentUplinkFreq = 145.95e6; });
    QStringList order;
    const QWidget* first = window.nextInFocusChain();
    for (const QWidget* w = first;;) {
        if ((w->focusPolicy() & Qt::TabFocus) && w->isVisible() && w->isEnabled()) {
            order << w->objectName();
            EXPECT_FALSE(w->accessibleName().isEmpty()) << w->objectName().toStdString();
        }
        w = w->nextInFocusChain();
        if (w == first) break;
    }
    EXPECT_EQ(
        order,
        (QStringList{
            "refreshPassesButton", "passList",    "transponderPicker", "rxFrequency", "ritMinus100",
            "ritMinus10",          "ritZero",     "ritPlus10",         "ritPlus100",  "txFrequency",
            "titMinus1k",          "titMinus100", "titZero",           "titPlus100",  "titPlus1k",
            "txpMinus1k",          "txpMinus100", "txpMinus10",        "txpZero",     "txpPlus10",
            "txpPlus100",          "txpPlus1k",   "txpSave",           "trackButton", "stopButton",
            "resetCalButton"}));
}

TEST_F(MainWindowTest, ThemeMayChangeWhileItIsShown) {
    showWindow();
    Theme::apply(false);
    QTest::qWait(0);
    EXPECT_EQ(window.grab().toImage().pixelColor(4, window.height() - 4),
              Theme::color(Ink::window));
    Theme::apply(true);
    QTest::qWait(0);
    EXPECT_EQ(window.grab().toImage().pixelColor(4, window.height() - 4),
              Theme::color(Ink::window));
}

}  // namespace
}  // namespace veloran::test
