#include "ui/title_bar.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QProgressBar>
#include <map>

#include "ui_fixture.h"

namespace veloran::test {
namespace {

class TitleBarTest : public UiFixture {
  protected:
    TitleBar bar{state};
};

TEST_F(TitleBarTest, StatusMessageShowsWhenNothingLoads) {
    EXPECT_EQ(textOf(bar, "status"), "");
    EXPECT_FALSE(isShown(bar, "loadingSpinner"));
    state->statusMessage = "12 passes in next 24h";
    bar.refresh();
    EXPECT_EQ(textOf(bar, "status"), "12 passes in next 24h");
}

TEST_F(TitleBarTest, SpinnerHidesTheStatusMessageWhileLoading) {
    state->statusMessage = "Fetching TLEs...";
    state->isLoadingTLEs = true;
    bar.refresh();
    EXPECT_EQ(textOf(bar, "status"), "Loading...");
    EXPECT_TRUE(isShown(bar, "loadingSpinner"));
}

TEST_F(TitleBarTest, ObserverAndLocatorShow) {
    EXPECT_EQ(textOf(bar, "observerPosition"), "33.8700°N 84.3400°W");
    EXPECT_EQ(textOf(bar, "gridLocator"), "EM73tu");
    state->obsLatitude = 0;
    state->obsLongitude = 0;
    bar.refresh();
    EXPECT_EQ(textOf(bar, "observerPosition"), "0.0000°N 0.0000°E");
}

TEST_F(TitleBarTest, VersionComesFromTheApplication) {
    EXPECT_EQ(textOf(bar, "version"), "v?");
    QCoreApplication::setApplicationVersion("2.3.4");
    EXPECT_EQ(textOf(TitleBar(state), "version"), "v2.3.4");
    QCoreApplication::setApplicationVersion("");
}

TEST_F(TitleBarTest, HelpTextsShow) {
    EXPECT_EQ(child<QWidget>(bar, "version").toolTip(),
              "App version — auto-increments with each build");
    const std::map<const char*, QString> helps{
        {"browserButton", "Satellite Browser (Ctrl+B)"},
        {"satelliteListButton", "Quick Satellite List"},
        {"refreshPassesButton", "Refresh Passes"},
        {"settingsButton", "Settings"},
    };
    for (const auto& [name, help] : helps) {
        EXPECT_EQ(child<QWidget>(bar, name).toolTip(), help) << name;
        EXPECT_EQ(child<QWidget>(bar, name).accessibleName(), help) << name;
    }
}

TEST_F(TitleBarTest, ButtonsSetTheFlagsOfTheirSheets) {
    child<QAbstractButton>(bar, "satelliteListButton").click();
    EXPECT_TRUE(state->showSatelliteList);
    child<QAbstractButton>(bar, "settingsButton").click();
    EXPECT_TRUE(state->showSettings);
    QSignalSpy asked(&bar, &TitleBar::browserRequested);
    child<QAbstractButton>(bar, "browserButton").click();
    EXPECT_EQ(asked.size(), 1);
}

TEST_F(TitleBarTest, LongSearchOfPassesShowsItsProgress) {
    EXPECT_FALSE(isShown(bar, "passProgress"));
    state->passProgress = 0.37;
    bar.refresh();
    EXPECT_TRUE(isShown(bar, "passProgress"));
    EXPECT_EQ(child<QProgressBar>(bar, "passProgress").value(), 37);
    state->passProgress = std::nullopt;
    bar.refresh();
    EXPECT_FALSE(isShown(bar, "passProgress"));
}

TEST_F(TitleBarTest, LoadingTellsWhatItWaitsForWhenPointedAt) {
    state->statusMessage = "Fetching TLEs...";
    state->isLoadingTLEs = true;
    bar.refresh();
    EXPECT_EQ(child<QWidget>(bar, "status").toolTip(), "<p>Fetching TLEs...</p>");
    EXPECT_EQ(child<QWidget>(bar, "status").accessibleDescription(), "Fetching TLEs...");
    state->isLoadingTLEs = false;
    bar.refresh();
    EXPECT_EQ(child<QWidget>(bar, "status").toolTip(), "");
}

TEST_F(TitleBarTest, MarkupInWhatItWaitsForIsShownAsItIsWritten) {
    state->statusMessage = "Tracking <img src=x>";
    state->isLoadingTLEs = true;
    bar.refresh();
    EXPECT_EQ(child<QWidget>(bar, "status").toolTip(), "<p>Tracking &lt;img src=x&gt;</p>");
}

TEST_F(TitleBarTest, RefreshStartsTheTimelineNowAndComputesPasses) {
    addSatellite("ISS", 25544, {passAt(start)});
    machine.loop.advance(100);
    child<QAbstractButton>(bar, "refreshPassesButton").click();
    EXPECT_EQ(state->timelineStartTime.get(), start + 100);
    EXPECT_EQ(state->statusMessage.get(), "Computing passes for 1 satellites...");
    EXPECT_TRUE(machine.http.requests.empty()) << "nothing is downloaded";
}

}  // namespace
}  // namespace veloran::test
