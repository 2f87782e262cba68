#include "ui/life/program_life.h"

#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <vector>

#include "core/unattended.h"
#include "ui/main_window.h"
#include "ui/ui_fixture.h"

namespace veloran::test {
namespace {

class NotedSleep final : public SleepInhibitor {
  public:
    void keepAwake(const std::optional<std::string>& reason) override { why = reason; }
    std::optional<std::string> why;
};

class NotedNotices final : public Notices {
  public:
    void show(const Notice& notice, std::function<void()> onChosen) override {
        shown.push_back(notice);
        chosen = std::move(onChosen);
    }
    void withdraw() override { chosen = nullptr; }
    std::vector<Notice> shown;
    std::function<void()> chosen;
};

class ProgramLifeTest : public UiFixture {
  protected:
    ProgramLifeTest() {
        QObject::connect(&life, &ProgramLife::ended, &window, [this] { ++ends; });
    }
    /// The load that the window starts is over, with nothing but Sun and Moon.
    void SetUp() override {
        window.show();
        ASSERT_TRUE(QTest::qWaitFor([this] { return state->isLoadingTLEs.get(); }));
        machine.loop.runPosted();
        ASSERT_FALSE(state->isLoadingTLEs.get());
    }
    ~ProgramLifeTest() override { QApplication::setQuitOnLastWindowClosed(true); }

    SatellitePtr addPassIn(double seconds) {
        const auto pass = passAt(start + seconds);
        const auto satellite = addSatellite("RS-44", 44909, {pass}, {channel("down", 435.64e6)});
        state->togglePassQueued(satellite, pass);
        return satellite;
    }
    void close() {
        window.close();
        QTest::qWait(0);
    }
    void letPass(double seconds) {
        machine.loop.advance(seconds);
    }
    QAction& entry(const char* name) {
        auto* found = life.tray().menu().findChild<QAction*>(name);
        if (!found) throw std::runtime_error(name);
        return *found;
    }
    static QList<QMessageBox*> questions() {
        QList<QMessageBox*> found;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* box = qobject_cast<QMessageBox*>(widget);
            if (box != nullptr && box->objectName() == "quitQuestion" && box->isVisible()) {
                found << box;
            }
        }
        return found;
    }
    static void answer(const char* button) {
        child<QPushButton>(*questions().front(), button).click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void pressQuit() { window.findChild<QAction*>("quitAction")->trigger(); }

    MainWindow window{state};
    NotedSleep sleep;
    NotedNotices notices;
    ProgramLife life{state, window, sleep, notices};
    int ends = 0;
};

TEST_F(ProgramLifeTest, ClosingWithNothingToDoEnds) {
    close();
    EXPECT_EQ(ends, 1);
    EXPECT_FALSE(life.isInBackground());
    EXPECT_TRUE(notices.shown.empty());
}

TEST_F(ProgramLifeTest, ClosingWithAQueueGoesOnAndSaysSoOnce) {
    addPassIn(3600);
    close();
    EXPECT_EQ(ends, 0);
    EXPECT_TRUE(life.isInBackground());
    ASSERT_EQ(notices.shown.size(), 1U);
    EXPECT_TRUE(notices.shown[0].title.starts_with("Veloran goes on: Next pass: RS-44 at "));
    letPass(600);
    EXPECT_EQ(notices.shown.size(), 1U);
    EXPECT_EQ(ends, 0);
}

TEST_F(ProgramLifeTest, ClosingAmidASessionGoesOn) {
    const auto satellite = addSatellite("ISS", 25544, {passAt(start)}, {channel("down", 145.8e6)});
    state->startTracking(satellite, std::nullopt);
    close();
    EXPECT_EQ(ends, 0);
    EXPECT_TRUE(life.isInBackground());
    EXPECT_TRUE(state->isTracking);
    letPass(86400);
    EXPECT_EQ(ends, 0) << "a session by hand has no end";
}

TEST_F(ProgramLifeTest, TheNoticeBringsTheWindowBack) {
    addPassIn(3600);
    close();
    ASSERT_FALSE(window.isVisible());
    ASSERT_TRUE(notices.chosen);
    const auto chosen = notices.chosen;
    chosen();
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(life.isInBackground());
    EXPECT_FALSE(notices.chosen) << "it is taken away";
    close();
    EXPECT_EQ(notices.shown.size(), 2U) << "closed again, it says so again";
}

TEST_F(ProgramLifeTest, AWindowThatWasLargeComesBackLarge) {
    addPassIn(3600);
    window.showMaximized();
    close();
    life.showWindow();
    EXPECT_TRUE(window.isMaximized());
    window.showMinimized();
    life.showWindow();
    EXPECT_FALSE(window.isMinimized());
}

TEST_F(ProgramLifeTest, TheTrayTellsWhatItIsAt) {
    addPassIn(100);
    close();
    EXPECT_TRUE(entry("trayDuty").text().startsWith("Next pass: RS-44 at "));
    EXPECT_FALSE(entry("trayDuty").isEnabled());
    EXPECT_FALSE(entry("trayStop").isEnabled());
    letPass(105);
    EXPECT_TRUE(entry("trayDuty").text().startsWith("Tracking RS-44 until "));
    EXPECT_TRUE(entry("trayStop").isEnabled());
}

TEST_F(ProgramLifeTest, TheTraysStopEndsTheSessionForGood) {
    addPassIn(100);
    close();
    letPass(105);
    ASSERT_TRUE(state->isTracking);
    entry("trayStop").trigger();
    EXPECT_FALSE(state->isTracking);
    EXPECT_EQ(entry("trayDuty").text(), "Nothing to track");
    letPass(10);
    EXPECT_FALSE(state->isTracking);
}

TEST_F(ProgramLifeTest, TheTraysShowAndQuitDoWhatTheySay) {
    addPassIn(3600);
    close();
    entry("trayShow").trigger();
    EXPECT_TRUE(window.isVisible());
    close();
    entry("trayQuit").trigger();
    ASSERT_EQ(questions().size(), 1);
    EXPECT_FALSE(window.isVisible()) << "the question stands by itself";
    answer("questionAct");
    EXPECT_EQ(ends, 1);
}

TEST_F(ProgramLifeTest, InTheBackgroundItEndsAMinuteAfterTheLastPass) {
    addPassIn(100);
    close();
    letPass(105);
    letPass(600);
    EXPECT_FALSE(state->isTracking);
    letPass(50);
    EXPECT_EQ(ends, 0);
    letPass(15);
    EXPECT_EQ(ends, 1);
}

TEST_F(ProgramLifeTest, WithItsWindowItStaysWhateverHasEnded) {
    addPassIn(100);
    for (int minute = 0; minute < 60; ++minute) letPass(60);
    EXPECT_EQ(ends, 0);
}

TEST_F(ProgramLifeTest, InTheBackgroundAReloadIsNoEnd) {
    const auto satellite = addPassIn(3600);
    close();
    satellite->passes = std::make_shared<const PassList>();  // until they are searched anew
    for (int minute = 0; minute < 5; ++minute) letPass(60);
    EXPECT_EQ(ends, 0);
    EXPECT_EQ(entry("trayDuty").text(), "Waiting for 1 queued pass");
}

TEST_F(ProgramLifeTest, QuittingWithNothingToDoEndsAtOnce) {
    pressQuit();
    EXPECT_EQ(ends, 1);
    EXPECT_TRUE(questions().isEmpty());
}

TEST_F(ProgramLifeTest, QuittingWithAQueueAsksOnce) {
    addPassIn(3600);
    pressQuit();
    life.quit();
    ASSERT_EQ(questions().size(), 1);
    EXPECT_EQ(questions().front()->parentWidget(), &window);
    EXPECT_TRUE(
        questions().front()->informativeText().startsWith("1 queued pass will not be tracked."));
    EXPECT_EQ(ends, 0);
    answer("questionAct");
    EXPECT_EQ(ends, 1);
    EXPECT_TRUE(questions().isEmpty());
}

TEST_F(ProgramLifeTest, EveryOtherAnswerKeepsItRunning) {
    addPassIn(3600);
    pressQuit();
    answer("questionKeep");
    pressQuit();
    QTest::keyClick(questions().front(), Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    pressQuit();
    QTest::keyClick(questions().front(), Qt::Key_Return);  // the default
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(questions().isEmpty());
    EXPECT_EQ(ends, 0);
    EXPECT_EQ(dutyOf(*state).passesAhead, 1U);
}

// It closes the windows and then ends the loop, in one turn.
TEST_F(ProgramLifeTest, ADesktopThatEndsItsSessionIsNotAskedNorTold) {
    addPassIn(3600);
    QApplication::closeAllWindows();
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(notices.shown.empty());
    EXPECT_TRUE(questions().isEmpty());
    EXPECT_EQ(ends, 0);
}

TEST_F(ProgramLifeTest, TheMachineIsKeptAwakeAsLongAsThereIsSomethingToDo) {
    EXPECT_EQ(sleep.why, std::nullopt);
    addPassIn(100);
    machine.loop.advance(1.1);
    ASSERT_TRUE(sleep.why.has_value()) << "by itself";
    EXPECT_TRUE(sleep.why->starts_with("Waiting for the pass of RS-44 at "));
    letPass(105);
    EXPECT_TRUE(sleep.why.value_or("").starts_with("Tracking RS-44 until "));
    letPass(600);
    EXPECT_EQ(sleep.why, std::nullopt) << "though the entry stays in the queue";
}

}  // namespace
}  // namespace veloran::test
