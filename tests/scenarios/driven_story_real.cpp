// What a new user does, by keyboard and pointer, to the program that they have just opened: chooses
// a satellite, brings in elements, sets up the station, works a pass, fills the queue; and finds
// everything again the next day.

#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>
#include <memory>

#include "scenarios/real_station.h"
#include "scenarios/virtual_desktop.h"
#include "servers/simulated_radio.h"

namespace veloran {
namespace {

using test::DrivenProgram;
using test::spinUntil;

const QString kPassesFound = "[0-9]+ passes in next 24h";
// A geostationary set: it can be imported, and has no pass to stand among the others.
const QString kPasted =
    "MYSAT\n"
    "1 99901U 20001A   26001.00000000  .00000000  00000-0  00000-0 0  9990\n"
    "2 99901   0.0500  90.0000 0002000  90.0000 180.0000  1.00270000    15\n";
const std::string kOwnElements =
    "OWNSAT\n"
    "1 99902U 20002A   26001.00000000  .00000000  00000-0  00000-0 0  9992\n"
    "2 99902   0.0500  90.0000 0002000  90.0000 200.0000  1.00270000    19\n";

class DrivenStory : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(desktop.isUp());
        ASSERT_TRUE(radio.start());
        services.server().serve("/own.txt", {.body = kOwnElements});
        QDir().mkpath(kPictures);
    }
    std::unique_ptr<DrivenProgram> start() {
        auto program = std::make_unique<DrivenProgram>(
            desktop, VELORAN_DRIVEN,
            QStringList{home.path(), QString::fromStdString(services.server().base())}, kPictures);
        EXPECT_TRUE(program->waitForText("status", kPassesFound));
        return program;
    }
    QString ownSource() { return QString::fromStdString(services.server().base()) + "/own.txt"; }

    void openBrowser(DrivenProgram& program) {
        program.press("ctrl+b");
        ASSERT_TRUE(program.waitFor("satelliteBrowser"));
        ASSERT_TRUE(program.waitForFocus("searchText"));
    }
    void closeBrowser(DrivenProgram& program) {
        program.press("alt+F4");
        ASSERT_TRUE(program.waitFor("satelliteBrowser", false));
    }
    void search(DrivenProgram& program, const QString& wanted) {
        program.fill("browserSearch", wanted);
        ASSERT_TRUE(program.waitForText("searchText", wanted));
    }
    /// From the search field to the first row that is a satellite.
    void goToFirstFound(DrivenProgram& program, const QString& name) {
        program.click("browserSearch");
        ASSERT_TRUE(program.waitForFocus("searchText"));
        program.press("Down");
        ASSERT_TRUE(program.waitForFocus("availableSatellites"));
        program.press("Down");
        ASSERT_TRUE(spinUntil([&] {
            return program.current("availableSatellites").startsWith(name);
        })) << program.current("availableSatellites").toStdString();
    }

    void chooseSatellite(DrivenProgram& program);
    void importElements(DrivenProgram& program);
    void setUpStation(DrivenProgram& program);
    void pickPass(DrivenProgram& program);
    void chooseTransponder(DrivenProgram& program);
    void trackAndTune(DrivenProgram& program);
    void selectAllAmateurSatellites(DrivenProgram& program);
    void queueTwoThatClash(DrivenProgram& program);
    void findAllAgain(DrivenProgram& program);
    void quit(DrivenProgram& program);

    const QString kPictures = VELORAN_BINARY_DIR "/story";
    QTemporaryDir home;
    test::SampleServices services;
    SimulatedRadio radio;
    test::VirtualDesktop desktop{QSize(1500, 1000)};
    QString calibration;
};

void DrivenStory::chooseSatellite(DrivenProgram& program) {
    program.click("browserButton");
    ASSERT_TRUE(program.waitFor("satelliteBrowser"));
    program.click("clearTracked");
    ASSERT_TRUE(program.waitForText("trackedCount", "\\(0\\)"));
    search(program, "rs-44");
    goToFirstFound(program, "RS-44");
    program.press("space");
    ASSERT_TRUE(program.waitForText("trackedCount", "\\(1\\)"));
    program.picture("1-browser");
    program.press("Return");
    ASSERT_TRUE(program.waitFor("satelliteDetail"));
    EXPECT_TRUE(program.waitForText("detailNorad", "NORAD 44909"));
    program.picture("2-details");
    program.press("Escape");
    ASSERT_TRUE(program.waitFor("satelliteDetail", false));
}

void DrivenStory::importElements(DrivenProgram& program) {
    program.click("importTLE");
    ASSERT_TRUE(program.waitFor("importSheet"));
    program.click("pasteText");
    program.type(kPasted);
    for (const char* key : {"ctrl+a", "ctrl+x", "ctrl+v"}) program.press(key);
    program.click("importFromText");
    EXPECT_TRUE(program.waitForText("resultMessage", "Imported 1 satellite"));
    program.picture("3-import");
    program.press("Escape");
    ASSERT_TRUE(program.waitFor("importSheet", false));
    search(program, "99901");
    EXPECT_TRUE(program.waitForText("availableCount", "1"));
    closeBrowser(program);
}

void DrivenStory::setUpStation(DrivenProgram& program) {
    program.click("settingsButton");
    ASSERT_TRUE(program.waitFor("settings"));
    program.fill("obsGrid", "JO62qm");
    program.press("Return");
    EXPECT_TRUE(program.waitForText("obsLatitude", "52.52\\d+"));
    program.fill("rigHost", "127.0.0.1");
    program.fill("rigPort", QString::number(radio.port()));
    program.click("customSources>disclosureHeading");
    program.fill("newSourceName", "Club");
    program.fill("newSourceURL", ownSource());
    program.press("Return");
    EXPECT_TRUE(program.waitFor("remove " + ownSource()));
    EXPECT_TRUE(spinUntil([&] {
        return std::ranges::count(services.server().requests(), std::string("/own.txt"),
                                  &HttpRequest::path) == 1;
    }));
    program.picture("4-settings");
    program.click("applyButton");
    ASSERT_TRUE(program.waitFor("settings", false));
    EXPECT_TRUE(program.waitForText("gridLocator", "JO62qm"));
    EXPECT_TRUE(program.waitForText("status", kPassesFound));
}

void DrivenStory::pickPass(DrivenProgram& program) {
    for (int hour = 12; hour < 24; ++hour) program.press("ctrl+minus");
    EXPECT_TRUE(program.waitForText("timelineHours", "24h"));
    for (double share = 0.08; share < 0.95 && !program.isThere("passSatellite"); share += 0.008) {
        program.clickAt("timeline", share, 0.6);
    }
    EXPECT_TRUE(program.waitForText("passSatellite", "RS-44.*"));
}

/// The transponder with its uplink stands above the beacon.
void DrivenStory::chooseTransponder(DrivenProgram& program) {
    program.click("transponderPicker");
    program.press("Home");
    program.press("Return");
    EXPECT_TRUE(program.waitForText("txFrequency", "145\\.9.*"));
}

void DrivenStory::trackAndTune(DrivenProgram& program) {
    program.click("trackButton");
    EXPECT_TRUE(program.waitForText("rigConnection", "Connected"));
    chooseTransponder(program);
    for (int i = 0; i < 3; ++i) program.click("ritPlus100");
    EXPECT_TRUE(program.waitForText("ritValue", "\\+300.*|\\+0\\.30.*"));
    program.click("titPlus1k");
    program.click("txpPlus100");
    program.click("txpMinus10");
    EXPECT_TRUE(program.waitForText("txpValue", "\\+90.*|\\+0\\.09.*"));
    calibration = program.text("txpValue");
    program.click("txpSave");
    ASSERT_TRUE(spinUntil([&] { return radio.received("\\sat_").size() > 20; }));
    program.picture("5-tracking");
    program.press("ctrl+comma");
    ASSERT_TRUE(program.waitFor("settings"));
    program.press("ctrl+shift+t");
    EXPECT_TRUE(program.waitFor("sessionGrid", false)) << "from under the settings";
    program.press("ctrl+comma");
    ASSERT_TRUE(program.waitFor("settings", false));
}

void DrivenStory::selectAllAmateurSatellites(DrivenProgram& program) {
    openBrowser(program);
    program.press("ctrl+a");
    program.press("BackSpace");
    program.clickRow("availableSatellites", "Amateur");
    program.type("noaa");
    ASSERT_TRUE(program.waitForText("searchText", "noaa"));
    EXPECT_EQ(program.text("trackedCount"), "(1)") << "letters are no commands";
    program.press("Escape");
    ASSERT_TRUE(program.waitForText("searchText", ""));
    program.clickRow("availableSatellites", "Amateur");
    program.press("ctrl+a");
    EXPECT_TRUE(spinUntil([&] { return program.text("trackedCount").size() > 3; }))
        << "ten or more";
    closeBrowser(program);
    EXPECT_TRUE(program.waitForText("status", kPassesFound));
}

void DrivenStory::queueTwoThatClash(DrivenProgram& program) {
    program.clickAt("passList", 0.5, 0.8);
    for (int i = 0; i < 3; ++i) program.press("Down");  // past what is under way
    for (int marked = 0; marked < 20 && !program.isThere("conflictAlert"); ++marked) {
        program.press("q");
        program.press("Down");
    }
    ASSERT_TRUE(program.waitFor("conflictAlert"));
    const QString queued = program.text("queuedBadge");
    program.picture("6-conflict");
    program.press("Escape");
    ASSERT_TRUE(program.waitFor("conflictAlert", false));
    EXPECT_EQ(program.text("queuedBadge"), queued) << "the one that was there is kept";
    program.picture("7-queue");
}

/// With passes in the queue: it asks.
void DrivenStory::quit(DrivenProgram& program) {
    program.press("ctrl+q");
    ASSERT_TRUE(program.waitFor("quitQuestion"));
    program.click("questionAct");
    EXPECT_EQ(program.ended(), 0);
}

void DrivenStory::findAllAgain(DrivenProgram& program) {
    EXPECT_EQ(program.text("gridLocator"), "JO62qm");
    EXPECT_EQ(program.text("timelineHours"), "24h");
    EXPECT_FALSE(program.isThere("queuedBadge")) << "marks are for one evening";

    openBrowser(program);
    EXPECT_GT(program.text("trackedCount").size(), 3);
    search(program, "99901");
    goToFirstFound(program, "MYSAT");
    search(program, "OWNSAT");
    EXPECT_TRUE(program.waitForText("availableCount", "1"));
    search(program, "rs-44");
    program.click("clearTracked");
    goToFirstFound(program, "RS-44");
    program.press("space");
    program.picture("8-found-again");
    closeBrowser(program);

    EXPECT_TRUE(program.waitForText("status", kPassesFound));
    program.clickRow("passList", "RS-44");
    EXPECT_TRUE(program.waitForText("passSatellite", "RS-44.*"));
    program.click("trackButton");
    EXPECT_TRUE(program.waitForText("rigConnection", "Connected"));
    EXPECT_TRUE(program.waitForText("txpValue", QRegularExpression::escape(calibration)))
        << "on the channel that was worked last";
    EXPECT_TRUE(program.waitForText("rxFrequency", "435\\.6.*"));
    program.picture("9-tracking-again");
}

TEST_F(DrivenStory, NewUserSetsUpAStationWorksAPassAndFindsItAllAgain) {
    {
        const auto program = start();
        chooseSatellite(*program);
        importElements(*program);
        setUpStation(*program);
        pickPass(*program);
        trackAndTune(*program);
        selectAllAmateurSatellites(*program);
        queueTwoThatClash(*program);
        quit(*program);
    }
    const auto program = start();
    findAllAgain(*program);
    program->terminate();
    EXPECT_EQ(program->ended(), 0) << "in good order, amid a session";
}

}  // namespace
}  // namespace veloran
