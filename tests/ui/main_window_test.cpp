#include "ui/main_window.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenuBar>
#include <QPointer>
#include <QSplitter>
#include <map>
#include <set>

#include "ui/detail/detail_panel.h"
#include "ui/detail/frequency_column.h"
#include "ui/detail/pass_column.h"
#include "ui/detail/rig_column.h"
#include "ui/pass_list/pass_list_view.h"
#include "ui/quick_list/satellite_list_view.h"
#include "ui/settings/settings_view.h"
#include "ui/theme.h"
#include "ui_fixture.h"

namespace veloran::test {
namespace {

class MainWindowTest : public UiFixture {
  protected:
    void showWindow() {
        window.show();
        ASSERT_TRUE(QTest::qWaitFor([this] { return state->isLoadingTLEs.get(); }, kPatienceMs));
    }
    void trackPair() {
        const auto satellite = addSatellite("RS-44", 44909, {passAt(start)},
                                            {channel("down", 435.64e6), channel("up", 145.95e6)});
        select(satellite, satellite->transmitters[0]);
        state->startTracking(satellite, satellite->transmitters[0]);
    }
    QRect placeOf(const char* name) {
        const auto& view = child<QWidget>(window, name);
        return {view.mapTo(&window, QPoint(0, 0)), view.size()};
    }
    /// Of the pixels of a text, those inside its strokes stand out most.
    static double greatestContrast(const QImage& image, const QRect& place, const QColor& ground) {
        double greatest = 1;
        for (int y = place.top(); y <= place.bottom(); ++y) {
            for (int x = place.left(); x <= place.right(); ++x) {
                greatest = std::max(greatest, contrastRatio(image.pixelColor(x, y), ground));
            }
        }
        return greatest;
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
    showWindow();
    window.resize(1, 1);
    QTest::qWait(0);
    EXPECT_EQ(window.centralWidget()->minimumSize(), QSize(1050, 700));
    EXPECT_EQ(window.centralWidget()->size(), QSize(1050, 700))
        << "the menu bar comes on top, and the content fits";
    const auto* panel = window.findChild<DetailPanel*>();
    EXPECT_EQ(panel->height(), 240);
    EXPECT_EQ(panel->width(), 1050);
    EXPECT_GE(window.findChild<PassListView*>()->height(), 120);
}

TEST_F(MainWindowTest, DiskHasTwoHundredPointsWhereverTheSplitsStand) {
    showWindow();
    auto& right = child<QSplitter>(window, "rightPanes");
    auto& panes = child<QSplitter>(window, "panes");
    for (const QSize size : {QSize(1050, 700), QSize(1200, 800), QSize(1050, 1000)}) {
        window.resize(size + QSize(0, window.height() - window.centralWidget()->height()));
        QTest::qWait(0);
        for (const QList<int>& heights : {right.sizes(), QList<int>{1000, 1}}) {
            for (const QList<int>& widths : {panes.sizes(), QList<int>{2000, 1}}) {
                right.setSizes(heights);
                panes.setSizes(widths);
                QTest::qWait(0);
                const QRect disk = placeOf("skyDisk");
                EXPECT_GE(disk.width(), 200) << size.width() << " x " << size.height();
                EXPECT_EQ(disk.height(), disk.width());
                EXPECT_TRUE(window.rect().contains(disk));
                EXPECT_GE(placeOf("satelliteMap").height(), 200);
                EXPECT_GE(placeOf("timeline").width(), 300);
            }
        }
    }
    EXPECT_EQ(window.centralWidget()->minimumSize(), QSize(1050, 700));
}

TEST_F(MainWindowTest, NoTwoSpokenNamesAreEqual) {
    trackPair();
    showWindow();
    refreshedAfter(window, [&] { state->currentUplinkFreq = 145.95e6; });
    std::set<std::string> names;
    for (const QWidget* w : window.findChildren<QWidget*>()) {
        const std::string name = w->accessibleName().toStdString();
        if (name.empty() || !w->isVisible()) continue;
        EXPECT_TRUE(names.insert(name).second) << name;
    }
    for (const char* name : {"Receive at satellite", "Receive Doppler", "Transmit at satellite",
                             "Transmit Doppler", "Transponder sense STR", "Protocol —"}) {
        EXPECT_TRUE(names.contains(name)) << name;
    }
}

TEST_F(MainWindowTest, ColumnsKeepTheirWidthsInTheSmallestWindow) {
    trackPair();
    showWindow();
    window.resize(1, 1);
    QTest::qWait(0);
    const auto* pass = window.findChild<PassColumn*>();
    const auto* frequencies = window.findChild<FrequencyColumn*>();
    const auto* rig = window.findChild<RigColumn*>();
    EXPECT_EQ(pass->geometry(), QRect(0, 0, 400, 240));
    EXPECT_EQ(frequencies->geometry(), QRect(401, 0, 1050 - 400 - 320 - 2, 240));
    EXPECT_EQ(rig->geometry(), QRect(1050 - 320, 0, 320, 240));
}

TEST_F(MainWindowTest, MenuZoomsTheTimelineByHoursWithinItsBounds) {
    state->timelineHoursVisible = 3.0;
    action("zoomInAction").trigger();
    EXPECT_EQ(state->timelineHoursVisible, 2.0);
    action("zoomInAction").trigger();
    EXPECT_EQ(state->timelineHoursVisible, 2.0);
    state->timelineHoursVisible = 47.5;
    action("zoomOutAction").trigger();
    EXPECT_EQ(state->timelineHoursVisible, 48.0);
    action("zoomOutAction").trigger();
    EXPECT_EQ(state->timelineHoursVisible, 48.0);
}

TEST_F(MainWindowTest, ScrollToNowLeavesAQuarterOfTheSpanBehind) {
    state->timelineHoursVisible = 8.0;
    action("scrollToNowAction").trigger();
    EXPECT_EQ(state->timelineStartTime.get(), start - 2 * 3600.0);
}

TEST_F(MainWindowTest, StatusFollowsTheState) {
    refreshedAfter(window, [&] { state->statusMessage = "Fetching TLEs..."; });
    EXPECT_EQ(textOf(window, "status"), "Fetching TLEs...");
}

TEST_F(MainWindowTest, PassCountFollowsTheState) {
    refreshedAfter(window, [&] { addSatellite("ISS", 25544, {passAt(start), passAt(start + 9)}); });
    EXPECT_EQ(textOf(window, "passCount"), "2 upcoming");
}

TEST_F(MainWindowTest, TicksLayNothingOutAnewAndDrawOnlyWhatChanged) {
    trackPair();
    showWindow();
    state->currentAzimuth = 10;
    state->currentCorrectedFreq = 145951157;
    state->currentUplinkFreq = 435151157;
    refreshedAfter(window, [&] { state->currentRange = 1000; });
    for (int turn = 0; turn < 10; ++turn) QTest::qWait(0);  // until every part has its place

    struct Counter : QObject {
        int layouts = 0;
        std::map<QString, int> paints;
        bool eventFilter(QObject* watched, QEvent* event) override {
            if (event->type() == QEvent::LayoutRequest) ++layouts;
            if (event->type() == QEvent::Paint) ++paints[watched->objectName()];
            return false;
        }
    } counter;
    window.installEventFilter(&counter);
    for (QWidget* w : window.findChildren<QWidget*>()) w->installEventFilter(&counter);
    for (int tick = 0; tick < 20; ++tick) {
        refreshedAfter(window, [&] {
            state->currentCorrectedFreq = 145951157 + tick * 37 + 1;
            state->currentDopplerShift = 900 + tick * 37;
            state->currentUplinkFreq = 435151157 - tick * 91;
            state->currentAzimuth = 10 + tick * 7;
            state->currentElevation = tick * 2.5;
            state->currentRange = 1000 + tick * 250;
            state->currentDopplerRate = -50 - tick * 7.3;
        });
        QTest::qWait(0);
    }
    EXPECT_EQ(counter.layouts, 0);
    EXPECT_GE(counter.paints["sessionRange"], 15);
    EXPECT_GE(counter.paints["rxFrequency"], 15);
    for (const char* still : {"status", "passSatellite", "transponderPicker", "rigEndpoint",
                              "trackButton", "sessionUpdate", "txpPlus10"}) {
        EXPECT_EQ(counter.paints[still], 0) << still;
    }
}

TEST_F(MainWindowTest, MenusHoldTheirEntriesAndShortcuts) {
    QStringList titles;
    for (const QAction* menu : window.menuBar()->actions()) titles << menu->text().remove('&');
    EXPECT_EQ(titles, (QStringList{"File", "Tracking", "View", "Window", "Help"}));
    EXPECT_EQ(action("startTrackingAction").text(), "Start Tracking");
    EXPECT_EQ(action("startTrackingAction").shortcut(), QKeySequence("Ctrl+T"));
    EXPECT_EQ(action("stopTrackingAction").text(), "Stop Tracking");
    EXPECT_EQ(action("stopTrackingAction").shortcut(), QKeySequence("Ctrl+Shift+T"));
    EXPECT_EQ(action("refreshPassesAction").text(), "Refresh TLEs && Passes");
    EXPECT_EQ(action("refreshPassesAction").shortcut(), QKeySequence("Ctrl+R"));
    EXPECT_EQ(action("satelliteListAction").text(), "Satellite List (Quick)");
    EXPECT_EQ(action("satelliteListAction").shortcut(), QKeySequence("Ctrl+L"));
    EXPECT_EQ(action("settingsAction").text(), "Settings");
    EXPECT_EQ(action("settingsAction").shortcut(), QKeySequence("Ctrl+,"));
    EXPECT_EQ(action("browserAction").text(), "Satellite Browser");
    EXPECT_EQ(action("browserAction").shortcut(), QKeySequence("Ctrl+B"));
    EXPECT_EQ(action("zoomInAction").shortcut(), QKeySequence("Ctrl++"));
    EXPECT_EQ(action("zoomOutAction").shortcut(), QKeySequence("Ctrl+-"));
    EXPECT_EQ(action("scrollToNowAction").shortcut(), QKeySequence("Ctrl+N"));
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

TEST_F(MainWindowTest, SettingsAreOnScreenWhileTheirFlagIsSet) {
    showWindow();
    EXPECT_EQ(window.findChild<SettingsView*>(), nullptr);
    refreshedAfter(window, [&] { action("settingsAction").trigger(); });
    QPointer<SettingsView> sheet = window.findChild<SettingsView*>();
    ASSERT_NE(sheet, nullptr);
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
    sheet->reject();
    EXPECT_FALSE(state->showSettings);

    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    refreshedAfter(window, [&] { state->showSettings = true; });
    sheet = window.findChild<SettingsView*>();
    ASSERT_NE(sheet, nullptr);
    refreshedAfter(window, [&] { action("settingsAction").trigger(); });
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(sheet, nullptr);
}

TEST_F(MainWindowTest, QuickListIsOnScreenWhileItsFlagIsSet) {
    showWindow();
    refreshedAfter(window, [&] { action("satelliteListAction").trigger(); });
    QPointer<SatelliteListView> sheet = window.findChild<SatelliteListView*>();
    ASSERT_NE(sheet, nullptr);
    EXPECT_TRUE(sheet->isVisible());
    refreshedAfter(window, [&] { state->showSatelliteList = false; });
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(sheet, nullptr);
}

TEST_F(MainWindowTest, ShortcutThatOpenedASheetClosesIt) {
    showWindow();
    for (const Qt::Key key : {Qt::Key_Comma, Qt::Key_L}) {
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        Published<bool>& flag = key == Qt::Key_L ? state->showSatelliteList : state->showSettings;
        refreshedAfter(window, [&] { QTest::keyClick(&window, key, Qt::ControlModifier); });
        ASSERT_TRUE(flag);
        QPointer<QWidget> sheet = QApplication::activeModalWidget();
        ASSERT_NE(sheet, nullptr);
        sheet->activateWindow();
        QTest::qWait(0);
        QTest::keyClick(sheet, key == Qt::Key_L ? Qt::Key_Comma : Qt::Key_L, Qt::ControlModifier);
        EXPECT_TRUE(flag);
        EXPECT_FALSE(state->showSettings && state->showSatelliteList) << "one at a time";
        refreshedAfter(window, [&] {
            QTest::keyClick(sheet->focusWidget() ? sheet->focusWidget() : sheet.data(), key,
                            Qt::ControlModifier);
        });
        EXPECT_FALSE(flag);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(sheet, nullptr);
    }
}

class StopFromUnderASheet : public MainWindowTest {
  protected:
    void SetUp() override {
        trackPair();
        showWindow();
        ASSERT_TRUE(state->isTracking);
    }
    QWidget* openBrowser() {
        window.openBrowser();
        QTest::qWait(0);
        return QApplication::activeWindow();
    }
    void expectStopFrom(QWidget* place) {
        ASSERT_NE(place, nullptr);
        place->activateWindow();
        QTest::qWait(0);
        QTest::keyClick(place, Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_FALSE(state->isTracking);
    }
};

TEST_F(StopFromUnderASheet, Settings) {
    refreshedAfter(window, [&] { state->showSettings = true; });
    expectStopFrom(QApplication::activeModalWidget());
    EXPECT_TRUE(state->showSettings) << "the sheet stays";
}

TEST_F(StopFromUnderASheet, FieldOfTheSettings) {
    refreshedAfter(window, [&] { state->showSettings = true; });
    expectStopFrom(window.findChild<SettingsView*>()->findChild<QLineEdit*>("obsLatitude"));
}

TEST_F(StopFromUnderASheet, QuickList) {
    refreshedAfter(window, [&] { state->showSatelliteList = true; });
    expectStopFrom(QApplication::activeModalWidget());
}

TEST_F(StopFromUnderASheet, QuestionOfAConflict) {
    const auto& satellite = *state->satellites->front();
    const QueuedPassRef pass = makePassRef(satellite.id, satellite.name, satellite.passes->front());
    refreshedAfter(window, [&] { state->pendingPassConflict = PassConflict{pass, pass}; });
    expectStopFrom(QApplication::activeModalWidget());
}

TEST_F(StopFromUnderASheet, BrowserBesideTheSettings) {
    QWidget* browser = openBrowser();
    refreshedAfter(window, [&] { state->showSettings = true; });
    expectStopFrom(browser);
}

TEST_F(StopFromUnderASheet, ImportOverTheBrowser) {
    QWidget* browser = openBrowser();
    child<QAbstractButton>(*browser, "importTLE").click();
    expectStopFrom(browser->findChild<QWidget*>("importSheet"));
}

TEST_F(MainWindowTest, BrowserIsOneWindowThatClosesWithTheMainOne) {
    const auto browsers = [] {
        QList<QWidget*> found;
        for (QWidget* w : QApplication::topLevelWidgets()) {
            if (w->objectName() == "satelliteBrowser") found << w;
        }
        return found;
    };
    showWindow();
    EXPECT_TRUE(browsers().isEmpty());
    child<QAbstractButton>(window, "browserButton").click();
    ASSERT_EQ(browsers().size(), 1);
    EXPECT_TRUE(browsers().front()->isVisible());
    child<QAbstractButton>(window, "openBrowser").click();
    action("browserAction").trigger();
    ASSERT_EQ(browsers().size(), 1);
    window.close();
    EXPECT_FALSE(browsers().front()->isVisible());
}

TEST_F(MainWindowTest, MenuShortcutsActFromTheBrowserToo) {
    showWindow();
    action("browserAction").trigger();
    QTest::qWait(0);
    QWidget* browser = QApplication::activeWindow();
    ASSERT_NE(browser, nullptr);
    ASSERT_EQ(browser->objectName(), "satelliteBrowser");
    const double hours = state->timelineHoursVisible;
    QTest::keyClick(browser, Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(state->timelineHoursVisible, hours + 1);
    refreshedAfter(window, [&] { QTest::keyClick(browser, Qt::Key_L, Qt::ControlModifier); });
    EXPECT_TRUE(state->showSatelliteList);
    QTest::keyClick(browser, Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(state->timelineHoursVisible, hours + 1) << "a sheet keeps them off the window below";
}

TEST_F(MainWindowTest, EveryControlIsReachedByTheTabKeyAndHasAName) {
    trackPair();
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
    const QString expected =
        "browserButton satelliteListButton refreshPassesButton settingsButton favoritesToggle "
        "scrollToNow timelineZoomIn timelineZoomOut timeline "
        "addFavorites openBrowser passList satelliteMap trackHours mapStyle.standard "
        "transponderPicker rxFrequency ritMinus100 ritMinus10 ritZero ritPlus10 ritPlus100 "
        "txFrequency titMinus1k titMinus100 titZero titPlus100 titPlus1k txpMinus1k txpMinus100 "
        "txpMinus10 txpZero txpPlus10 txpPlus100 txpPlus1k txpSave trackButton stopButton "
        "resetCalButton";
    EXPECT_EQ(order.join(' ').toStdString(), expected.toStdString());
}

TEST_F(MainWindowTest, ThemeMayChangeWhileItIsShown) {
    trackPair();
    showWindow();
    refreshedAfter(window, [&] { state->currentCorrectedFreq = 145951157; });
    for (const bool dark : {false, true}) {
        Theme::apply(dark);
        QTest::qWait(0);
        const QImage image = window.grab().toImage();
        const QColor ground = Theme::color(Ink::window);
        EXPECT_EQ(image.pixelColor(4, window.height() - 4), ground);
        for (const char* name : {"rxFrequency", "rigConnection"}) {
            EXPECT_GE(greatestContrast(image, placeOf(name), ground), Theme::kLegibleContrast)
                << name << (dark ? ", dark" : ", light");
        }
    }
}

}  // namespace
}  // namespace veloran::test
