#include "ui/settings/settings_view.h"

#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QWheelEvent>
#include <map>

#include "settings_fixture.h"
#include "ui/theme.h"
#include "ui/widgets/disclosure.h"
#include "ui/widgets/fitted_text.h"
#include "ui/widgets/switch_button.h"

namespace veloran::test {
namespace {

class SettingsViewTest : public SettingsFixture {
  protected:
    /// In the place of what the field holds.
    void pasteInto(const char* name, const QString& text) {
        QGuiApplication::clipboard()->setText(text);
        field(name).selectAll();
        QTest::keySequence(&field(name), QKeySequence::Paste);
        QGuiApplication::clipboard()->clear();
    }
    QString noteOf(const char* name) {
        return textOf(*sheet, (std::string(name) + "Note").c_str());
    }
    bool hasRedFrame(const char* name) {
        const QImage image = field(name).grab().toImage();
        const QColor edge = image.pixelColor(image.width() / 2, 0);
        return edge.red() > 150 && edge.red() > 2 * edge.green() && edge.red() > 2 * edge.blue();
    }
};

// ---- The sheet itself.

TEST_F(SettingsViewTest, SheetHasItsSizeAndBelongsToItsWindow) {
    EXPECT_EQ(sheet->size(), QSize(520, 760));
    EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
    EXPECT_EQ(sheet->parentWidget(), &window);
}

TEST_F(SettingsViewTest, LowSheetScrollsTheFormAndKeepsItsButtons) {
    sheet->resize(520, 400);
    QTest::qWait(0);
    EXPECT_EQ(sheet->size(), QSize(520, 400));
    auto& form = child<QScrollArea>(*sheet, "settingsForm");
    EXPECT_GT(form.verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(form.horizontalScrollBar()->maximum(), 0);
    for (const char* name : {"cancelButton", "applyButton"}) {
        const auto& button = child<QPushButton>(*sheet, name);
        EXPECT_TRUE(
            sheet->rect().contains(QRect(button.mapTo(sheet.data(), QPoint()), button.size())))
            << name;
    }
}

TEST_F(SettingsViewTest, WhatADisclosureOpensIsScrolledTo) {
    const auto& form = child<QScrollArea>(*sheet, "settingsForm");
    sheet->resize(520, 500);
    QTest::qWait(0);
    for (const char* name : {"customSources", "section Amateur & Stations"}) {
        auto& disclosure = child<Disclosure>(*sheet, name);
        auto& heading = child<QWidget>(disclosure, "disclosureHeading");
        // So that the heading stands at the foot.
        form.verticalScrollBar()->setValue(
            heading.mapTo(form.widget(), QPoint(0, heading.height())).y() -
            form.viewport()->height());
        ASSERT_LE(heading.mapTo(form.viewport(), QPoint(0, heading.height())).y(),
                  form.viewport()->height());
        QTest::mouseClick(&heading, Qt::LeftButton);
        ASSERT_TRUE(disclosure.isOpen());
        EXPECT_TRUE(QTest::qWaitFor([&] {
            const int foot = disclosure.mapTo(form.viewport(), QPoint(0, disclosure.height())).y();
            return foot <= form.viewport()->height();
        })) << name;
        EXPECT_GE(heading.mapTo(form.viewport(), QPoint()).y(), 0) << name;
        disclosure.setOpen(false);
    }
}

TEST_F(SettingsViewTest, ClosingInAnyWayClearsTheFlag) {
    for (const auto& close : std::map<std::string, std::function<void()>>{
             {"Escape", [this] { QTest::keyClick(sheet, Qt::Key_Escape); }},
             {"Cancel", [this] { click("cancelButton"); }},
             {"Apply", [this] { click("applyButton"); }},
             {"window", [this] { sheet->close(); }}}) {
        SCOPED_TRACE(close.first);
        if (!sheet) open();
        ASSERT_TRUE(state->showSettings);
        close.second();
        EXPECT_FALSE(state->showSettings);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_FALSE(sheet);
    }
}

TEST_F(SettingsViewTest, ClearingTheFlagClosesTheSheet) {
    state->showSettings = false;
    sheet->refresh();
    EXPECT_FALSE(sheet->isVisible());
}

TEST_F(SettingsViewTest, ReturnAppliesFromAnyField) {
    EXPECT_TRUE(child<QPushButton>(*sheet, "applyButton").isDefault());
    type("rigHost", "shack.local");
    QTest::keyClick(&field("rigHost"), Qt::Key_Return);
    EXPECT_EQ(state->rigHost.get(), "shack.local");
    EXPECT_FALSE(state->showSettings);
}

TEST_F(SettingsViewTest, FieldsBeginAtOneEdge) {
    click("obs2Enabled");
    sheet->refresh();
    QTest::qWait(0);
    const auto left = [this](const char* name) {
        return field(name).mapTo(sheet.data(), QPoint()).x();
    };
    for (const char* name : {"obsLatitude", "obsAltitude", "obsGrid", "obs2Name", "obs2Grid",
                             "rigHost", "rigPort", "dopplerRate"}) {
        EXPECT_EQ(left(name), left("obsName")) << name;
    }
}

TEST_F(SettingsViewTest, SaysWhatItIsAbout) {
    QStringList texts;
    for (const auto* label : sheet->findChildren<QLabel*>()) texts += label->text();
    texts.removeAll("");
    const QStringList told{
        "Observer Location",
        "Name",
        "Latitude",
        "Longitude",
        "Altitude",
        "m",
        "Grid",
        "Second Observer Location (optional)",
        "Show second site on map",
        "Future: covisibility / simultaneous-pass calculations.",
        "Rig Control (rigctld)",
        "Host",
        "Port",
        "Auto-connect on launch",
        "Force Classic rigctld (disable SAT_PROTO)",
        "Auto-detected by default. Toggle on to pin to legacy `set_freq` for debugging.",
        "SAT_PROTO Output",
        "rest_hz pattern",
        "Pattern A: receiver parks at the spec-sheet centre; the bird's drift shows as the "
        "beacon's visible offset on the Tarnwave waterfall. Cal / RIT / passband offset are "
        "STORED but NOT applied to rest_hz.\n"
        "Pattern B: receiver parks at the operator's chosen DL freq with transponder cal applied "
        "so the actual signal lands at the displayed centre. UL is computed via the same cal.",
        "Doppler Output",
        "Update Rate",
        "Hz",
        "(1–50)",
        "Presets",
        "TLE Sources",
        "Auto-Tracking",
        "Min elevation",
        "Queued passes below this elevation are skipped automatically. 5° is a reasonable "
        "default; raise it if your horizon is obstructed.",
        "Display",
        "Bearing line on polar plot",
        "Draw a thin radial line from the polar plot's centre to the live satellite position. "
        "Off by default to keep the chart uncluttered.",
        "Timeline",
        "Visible hours",
        "Settings"};
    for (const QString& text : told) EXPECT_TRUE(texts.contains(text)) << text.toStdString();
    EXPECT_EQ(child<QRadioButton>(*sheet, "transponderCenter").text(),
              "Transponder center — wideband SDR (A)");
    EXPECT_EQ(child<QRadioButton>(*sheet, "selectedDL").text(),
              "Selected RX freq + cal + RIT — narrow SDR / IC-9700 (B)");
    EXPECT_EQ(child<QPushButton>(*sheet, "useMyLocation").text(), "Use My Location");
    EXPECT_EQ(child<QPushButton>(*sheet, "obsFromGrid").text(), "From Grid");
}

TEST_F(SettingsViewTest, FieldsHaveTheirHintsAndWidths) {
    for (const auto& [name, hint, width] : {std::tuple{"obsName", "Home", 200},
                                            {"obsLatitude", "33.87", 140},
                                            {"obsLongitude", "-84.34", 140},
                                            {"obsAltitude", "300", 140},
                                            {"obsGrid", "EM73", 140},
                                            {"obs2Name", "Site 2", 200},
                                            {"obs2Latitude", "0.0", 140},
                                            {"obs2Longitude", "0.0", 140},
                                            {"obs2Grid", "FN31pr", 140},
                                            {"rigHost", "localhost", 200},
                                            {"rigPort", "4532", 200},
                                            {"dopplerRate", "10", 80},
                                            {"newSourceName", "Name (e.g. CSN)", 120}}) {
        EXPECT_EQ(field(name).placeholderText(), hint) << name;
        EXPECT_EQ(field(name).width(), width) << name;
    }
    EXPECT_EQ(field("newSourceURL").placeholderText(), "https://…");
}

TEST_F(SettingsViewTest, LineEndOfAPasteIsNoPartOfTheValue) {
    type("rigHost", "");
    type("rigPort", "");
    for (const auto& [name, text] :
         {std::pair("rigHost", "shack.local\n"), {"rigPort", "4533\r\n"}}) {
        QGuiApplication::clipboard()->setText(text);
        field(name).paste();
    }
    QGuiApplication::clipboard()->clear();
    click("applyButton");
    EXPECT_EQ(state->rigHost.get(), "shack.local");
    EXPECT_EQ(state->rigPort, 4533);
}

TEST_F(SettingsViewTest, StoredNameThatNoFieldShowsDoesNotHoldTheCursor) {
    state->obsName = std::string("Ho\nme");
    sheet->refresh();
    EXPECT_EQ(field("obsName").text(), "Home");
    field("obsName").setCursorPosition(1);
    sheet->refresh();
    EXPECT_EQ(field("obsName").cursorPosition(), 1);
}

// ---- Apply and Cancel.

TEST_F(SettingsViewTest, FieldsAreFilledFromTheState) {
    EXPECT_EQ(field("obsLatitude").text(), "33.870000");
    EXPECT_EQ(field("obsLongitude").text(), "-84.340000");
    EXPECT_EQ(field("obsAltitude").text(), "300");
    EXPECT_EQ(field("obsGrid").text(), "EM73tu");
    EXPECT_EQ(field("obsName").text(), "Home");
    EXPECT_EQ(field("obs2Name").text(), "Site 2");
    EXPECT_EQ(field("obs2Latitude").text(), "0.000000");
    EXPECT_EQ(field("obs2Longitude").text(), "0.000000");
    EXPECT_EQ(field("obs2Grid").text(), "JJ00aa");
    EXPECT_EQ(field("rigHost").text(), "localhost");
    EXPECT_EQ(field("rigPort").text(), "4532");
    EXPECT_EQ(field("dopplerRate").text(), "10");
}

TEST_F(SettingsViewTest, ApplyTakesEveryFieldAndSearchesThePasses) {
    type("obsLatitude", "51.5");
    type("obsLongitude", "-0.5");
    type("obsAltitude", "12.5");
    type("rigHost", "");
    type("rigPort", "4533");
    type("dopplerRate", "100");
    EXPECT_EQ(state->obsLatitude, 33.87) << "before Apply";
    click("applyButton");
    EXPECT_EQ(state->obsLatitude, 51.5);
    EXPECT_EQ(state->obsLongitude, -0.5);
    EXPECT_EQ(state->obsAltitude, 12.5);
    EXPECT_EQ(state->rigHost.get(), "");
    EXPECT_EQ(state->rigPort, 4533);
    EXPECT_EQ(state->dopplerUpdateHz, 50);
    EXPECT_EQ(state->statusMessage.get(), "Computing passes for 0 satellites...");
}

TEST_F(SettingsViewTest, AppliedGridMatchesTheCoordinatesWhateverTheFieldSays) {
    type("obsLatitude", "0");
    type("obsLongitude", "0");
    type("obsGrid", "FN31pr");
    click("applyButton");
    EXPECT_EQ(state->gridLocator.get(), "JJ00aa");
}

TEST_F(SettingsViewTest, CancelLeavesTheTypedFieldsUnapplied) {
    type("obsLatitude", "51.5");
    type("rigPort", "1");
    click("cancelButton");
    EXPECT_EQ(state->obsLatitude, 33.87);
    EXPECT_EQ(state->rigPort, 4532);
    EXPECT_EQ(state->statusMessage.get(), "") << "no search either";
}

TEST_F(SettingsViewTest, RatePresetThenCancelLeavesTheRate) {
    click("rate50");
    EXPECT_EQ(field("dopplerRate").text(), "50");
    EXPECT_EQ(state->dopplerUpdateHz, 10);
    click("cancelButton");
    EXPECT_EQ(state->dopplerUpdateHz, 10);
}

TEST_F(SettingsViewTest, RatePresetThenApplyTakesIt) {
    for (const char* rate : {"1", "5", "10", "20", "50"}) {
        if (!sheet) open();
        click((std::string("rate") + rate).c_str());
        click("applyButton");
        EXPECT_EQ(state->dopplerUpdateHz, std::stod(rate));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(SettingsViewTest, ChangedHostDoesNotReconnect) {
    const auto iss = addSatellite("ISS", 25544, {passAt(start)}, {channel("down", 145.8e6)});
    state->startTracking(iss, std::nullopt);
    machine.loop.runPosted();
    machine.tcp.newest().report(TcpState::ready);
    machine.loop.runPosted();
    ASSERT_TRUE(state->rigConnected);
    type("rigHost", "elsewhere");
    click("applyButton");
    machine.loop.runPosted();
    EXPECT_EQ(machine.tcp.connections.size(), 1u);
    EXPECT_EQ(machine.tcp.newest().host, "localhost");
    EXPECT_FALSE(machine.tcp.newest().cancelled);
    EXPECT_EQ(state->rigHost.get(), "elsewhere");
}

// ---- Observer.

TEST_F(SettingsViewTest, FromGridFillsThePosition) {
    type("obsGrid", "fn31pr");
    click("obsFromGrid");
    EXPECT_EQ(field("obsLatitude").text(), "41.729167");
    EXPECT_EQ(field("obsLongitude").text(), "-72.708333");
    EXPECT_EQ(state->obsLatitude, 33.87) << "only Apply takes it";
}

TEST_F(SettingsViewTest, FromGridWithAnInvalidLocatorChangesNothing) {
    for (const char* bad : {"", "EM7", "EMxx", "7373", "EM73 1", "\u00c9M73"}) {
        type("obsGrid", bad);
        click("obsFromGrid");
        EXPECT_EQ(field("obsLatitude").text(), "33.870000") << bad;
        EXPECT_EQ(field("obsLongitude").text(), "-84.340000") << bad;
    }
}

TEST_F(SettingsViewTest, ReturnInTheGridIsFromGrid) {
    click("obs2Enabled");
    for (const char* site : {"obs", "obs2"}) {
        const std::string prefix = site;
        type((prefix + "Grid").c_str(), "fn31pr");
        QTest::keyClick(&field((prefix + "Grid").c_str()), Qt::Key_Return);
        EXPECT_EQ(field((prefix + "Latitude").c_str()).text(), "41.729167") << site;
        type((prefix + "Grid").c_str(), "__12");
        QTest::keyClick(&field((prefix + "Grid").c_str()), Qt::Key_Enter);
        EXPECT_EQ(field((prefix + "Latitude").c_str()).text(), "41.729167") << site;
    }
    EXPECT_TRUE(state->showSettings) << "the sheet stays, for correction";
    EXPECT_EQ(state->obsLatitude, 33.87) << "only Apply takes it";
}

TEST_F(SettingsViewTest, PastedPositionIsSharedOut) {
    for (const char* name : {"obsLatitude", "obsLongitude"}) {
        field("obsLatitude").setText("1");
        field("obsLongitude").setText("2");
        pasteInto(name, "52,5200 N; 13,4050 E");
        EXPECT_EQ(field("obsLatitude").text(), "52.520000") << name;
        EXPECT_EQ(field("obsLongitude").text(), "13.405000") << name;
    }
    click("applyButton");
    EXPECT_EQ(state->obsLatitude, 52.52);
    EXPECT_EQ(state->obsLongitude, 13.405);
}

TEST_F(SettingsViewTest, TypedPositionIsSharedOutAtItsEnd) {
    type("obsLatitude", "52.52, -13.40");
    EXPECT_EQ(field("obsLatitude").text(), "52.52, -13.40") << "more may come";
    EXPECT_EQ(noteOf("obsLatitude"), "");
    field("obsLatitude").setFocus();
    QTest::keyClick(&field("obsLatitude"), Qt::Key_Tab);
    EXPECT_EQ(field("obsLatitude").text(), "52.520000");
    EXPECT_EQ(field("obsLongitude").text(), "-13.400000");
}

TEST_F(SettingsViewTest, TypedPositionIsAppliedWithReturn) {
    type("obsLatitude", "52,52");
    type("obsLongitude", "48.1 N, 11.6 E");
    QTest::keyClick(&field("obsLongitude"), Qt::Key_Return);
    EXPECT_FALSE(state->showSettings);
    EXPECT_EQ(state->obsLatitude, 48.1);
    EXPECT_EQ(state->obsLongitude, 11.6);
}

TEST_F(SettingsViewTest, SecondSiteTakesWhatPeopleWriteAtOnce) {
    click("obs2Enabled");
    type("obs2Latitude", "12,5 S");
    type("obs2Longitude", " 99 W");
    EXPECT_EQ(state->obs2Latitude, -12.5);
    EXPECT_EQ(state->obs2Longitude, -99);
    pasteInto("obs2Longitude", "52.52, 13.405");
    EXPECT_EQ(state->obs2Latitude, 52.52);
    EXPECT_EQ(state->obs2Longitude, 13.405);
    EXPECT_EQ(field("obs2Latitude").text(), "52.520000");
}

TEST_F(SettingsViewTest, TypingInOneFieldOfTheSecondSiteLeavesTheOther) {
    state->obs2Latitude = 12.3456789;
    state->obs2Enabled = true;
    sheet->reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    open();
    type("obs2Longitude", "7");
    EXPECT_EQ(state->obs2Latitude, 12.3456789) << "not as rounded as it is shown";
}

TEST_F(SettingsViewTest, FieldThatDoesNotReadSaysWhatItExpectsWhileItStands) {
    click("obs2Enabled");
    sheet->refresh();
    for (const auto& [name, bad, good, expected] :
         {std::tuple{"obsLatitude", "5 5", "5,5", "-90 to 90, such as 33.87 or 33.87 N"},
          {"obsLongitude", "84.34 N", "84.34 W", "-180 to 180, such as 84.34 W"},
          {"obsAltitude", "1,500", "1500", "Metres, such as 300"},
          {"obsGrid", "__12", "EM73", "Such as EM73tu"},
          {"obs2Latitude", "-91", "-89", "-90 to 90, such as 33.87 or 33.87 N"},
          {"obs2Longitude", "", "0", "-180 to 180, such as 84.34 W"},
          {"obs2Grid", "EM7", "", "Such as EM73tu"},
          {"rigPort", "65536", " 4533 ", "0 to 65535"},
          {"dopplerRate", "fast", "2,5", "A number, such as 10"}}) {
        SCOPED_TRACE(name);
        const auto isSaid = [&, name = name](const char* what) {
            EXPECT_EQ(noteOf(name), what);
            EXPECT_EQ(field(name).toolTip(), plainToolTip(what));
            EXPECT_EQ(field(name).accessibleDescription(), what);
        };
        isSaid("");
        EXPECT_FALSE(hasRedFrame(name));
        type(name, bad);
        isSaid(expected);
        EXPECT_TRUE(hasRedFrame(name));
        type(name, good);
        isSaid("");
        EXPECT_FALSE(hasRedFrame(name));
    }
}

TEST_F(SettingsViewTest, ApplyKeepsWhatTheFieldsThatDoNotReadHadBefore) {
    type("obsLatitude", "5 5");
    type("obsAltitude", "1,500");
    type("rigPort", "none");
    type("obsLongitude", "12,5");
    click("applyButton");
    EXPECT_EQ(state->obsLatitude, 33.87);
    EXPECT_EQ(state->obsAltitude, 300);
    EXPECT_EQ(state->rigPort, 4532);
    EXPECT_EQ(state->obsLongitude, 12.5);
}

TEST_F(SettingsViewTest, MyLocationFillsThePosition) {
    machine.location.position = {{47.3769, 8.5417, 408.4}};
    click("useMyLocation");
    EXPECT_EQ(field("obsLatitude").text(), "33.870000") << "nobody waits";
    machine.loop.runPosted();
    EXPECT_EQ(field("obsLatitude").text(), "47.376900");
    EXPECT_EQ(field("obsLongitude").text(), "8.541700");
    EXPECT_EQ(field("obsAltitude").text(), "408");
    EXPECT_EQ(field("obsGrid").text(), "EM73tu") << "the grid only feeds its own button";
}

TEST_F(SettingsViewTest, MyLocationWithoutAHeightKeepsTheAltitude) {
    machine.location.position = {{47.3769, 8.5417, std::nullopt}};
    click("useMyLocation");
    machine.loop.runPosted();
    EXPECT_EQ(field("obsLatitude").text(), "47.376900");
    EXPECT_EQ(field("obsAltitude").text(), "300");
}

TEST_F(SettingsViewTest, MyLocationWithoutAServiceDoesNothing) {
    click("useMyLocation");
    machine.loop.runPosted();
    EXPECT_EQ(field("obsLatitude").text(), "33.870000");
    EXPECT_EQ(field("obsAltitude").text(), "300");
}

TEST_F(SettingsViewTest, LateLocationLeavesWhatIsTypedMeanwhile) {
    machine.location.position = {{47.3769, 8.5417, 408.4}};
    click("useMyLocation");
    type("obsLatitude", "51.5");
    machine.loop.runPosted();
    EXPECT_EQ(field("obsLatitude").text(), "51.5");
    EXPECT_EQ(field("obsLongitude").text(), "-84.340000");
}

TEST_F(SettingsViewTest, LocationAfterTheSheetHasGoneIsDropped) {
    machine.location.position = {{47.3769, 8.5417, 408.4}};
    click("useMyLocation");
    click("cancelButton");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    machine.loop.runPosted();
    EXPECT_EQ(state->obsLatitude, 33.87);
}

// ---- What acts at once.

TEST_F(SettingsViewTest, SwitchesActAtOnceAndCancelKeepsThem) {
    click("rigAutoConnect");
    click("forceClassicRigctld");
    click("polarBearingLine");
    click("obs2Enabled");
    type("obsName", "QTH");
    click("cancelButton");
    EXPECT_TRUE(state->rigAutoConnect);
    EXPECT_TRUE(state->forceClassicRigctld);
    EXPECT_TRUE(state->polarBearingLine);
    EXPECT_TRUE(state->obs2Enabled);
    EXPECT_EQ(state->obsName.get(), "QTH");
    EXPECT_EQ(machine.settings.text("obsName"), "QTH");
}

TEST_F(SettingsViewTest, SecondSiteActsAsItIsTypedAndCancelKeepsIt) {
    EXPECT_FALSE(isShown(*sheet, "obs2Latitude"));
    click("obs2Enabled");
    sheet->refresh();
    EXPECT_TRUE(isShown(*sheet, "obs2Latitude"));
    type("obs2Name", "Portable");
    type("obs2Latitude", "12.5x");
    type("obs2Longitude", "99");
    EXPECT_EQ(state->obs2Latitude, 12.5) << "what was last readable";
    EXPECT_EQ(state->obs2Longitude, 99);
    EXPECT_EQ(state->obs2Name.get(), "Portable");
    click("cancelButton");
    EXPECT_EQ(state->obs2Latitude, 12.5);
}

TEST_F(SettingsViewTest, SecondSiteRefusesWhatHasNoLocator) {
    click("obs2Enabled");
    type("obs2Latitude", "-95");
    type("obs2Longitude", "-1805");
    EXPECT_EQ(state->obs2Latitude, -9) << "the last text that was a position";
    EXPECT_EQ(state->obs2Longitude, -180);
    click("cancelButton");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    open();
    EXPECT_EQ(field("obs2Grid").text(), QString::fromStdString(toMaidenhead(-9, -180)));
}

TEST_F(SettingsViewTest, GridOfTheSecondSiteSetsItAtOnce) {
    click("obs2Enabled");
    type("obs2Grid", "FN31pr");
    click("obs2FromGrid");
    EXPECT_EQ(field("obs2Latitude").text(), "41.729167");
    EXPECT_EQ(field("obs2Longitude").text(), "-72.708333");
    EXPECT_DOUBLE_EQ(state->obs2Latitude, fromMaidenhead("FN31pr")->lat);
    EXPECT_DOUBLE_EQ(state->obs2Longitude, fromMaidenhead("FN31pr")->lon);
    type("obs2Grid", "31FNpr");
    click("obs2FromGrid");
    EXPECT_DOUBLE_EQ(state->obs2Latitude, fromMaidenhead("FN31pr")->lat);
}

TEST_F(SettingsViewTest, OneRestPatternIsChosen) {
    auto& a = child<QRadioButton>(*sheet, "transponderCenter");
    auto& b = child<QRadioButton>(*sheet, "selectedDL");
    EXPECT_TRUE(b.isChecked());
    a.click();
    EXPECT_EQ(state->satProtoRestPattern.get(), SatProtoRestPattern::transponderCenter);
    EXPECT_FALSE(b.isChecked());
    state->satProtoRestPattern = SatProtoRestPattern::selectedDL;
    sheet->refresh();
    EXPECT_TRUE(b.isChecked());
    EXPECT_FALSE(a.isChecked());
}

TEST_F(SettingsViewTest, SlidersActAtOnceAndTellTheirValue) {
    EXPECT_EQ(textOf(*sheet, "minElevationValue"), "5°");
    EXPECT_EQ(textOf(*sheet, "visibleHoursValue"), "12h");
    QTest::keyClick(&child<QSlider>(*sheet, "minElevation"), Qt::Key_Right);
    QTest::keyClick(&child<QSlider>(*sheet, "visibleHours"), Qt::Key_End);
    EXPECT_EQ(state->minAutoTrackElevation, 6);
    EXPECT_EQ(state->timelineHoursVisible, 48);
    EXPECT_EQ(textOf(*sheet, "minElevationValue"), "6°");
    EXPECT_EQ(textOf(*sheet, "visibleHoursValue"), "48h");
}

TEST_F(SettingsViewTest, ValueOffTheSliderIsShownAndStays) {
    state->minAutoTrackElevation = 62.5;
    state->timelineHoursVisible = 1.5;
    sheet->refresh();
    EXPECT_EQ(child<QSlider>(*sheet, "minElevation").value(), 30);
    EXPECT_EQ(textOf(*sheet, "minElevationValue"), "62°");
    EXPECT_EQ(child<QSlider>(*sheet, "visibleHours").value(), 2);
    EXPECT_EQ(state->minAutoTrackElevation, 62.5);
    EXPECT_EQ(state->timelineHoursVisible, 1.5);
}

TEST_F(SettingsViewTest, RefreshFollowsTheStateAndLeavesWhatIsTyped) {
    type("obsLatitude", "51.5");
    type("rigHost", "typing");
    state->obsLatitude = 10.0;
    state->rigHost = std::string("other");
    state->rigAutoConnect = true;
    state->obsName = std::string("Cabin");
    state->minAutoTrackElevation = 20.0;
    machine.settings.writes.clear();
    sheet->refresh();
    EXPECT_EQ(field("obsLatitude").text(), "51.5");
    EXPECT_EQ(field("rigHost").text(), "typing");
    EXPECT_TRUE(child<SwitchButton>(*sheet, "rigAutoConnect").isChecked());
    EXPECT_EQ(field("obsName").text(), "Cabin");
    EXPECT_EQ(child<QSlider>(*sheet, "minElevation").value(), 20);
    EXPECT_TRUE(machine.settings.writes.empty()) << "following is no change";
}

TEST_F(SettingsViewTest, TextBesideASwitchFlipsIt) {
    auto& button = child<SwitchButton>(*sheet, "polarBearingLine");
    QTest::mouseClick(button.parentWidget(), Qt::LeftButton, {}, {120, 5});
    EXPECT_TRUE(state->polarBearingLine);
}

// ---- Wheel, keyboard, names, colours.

void turnWheelOver(QWidget& widget) {
    const QPointF middle = QRectF(widget.rect()).center();
    QWheelEvent event(middle, widget.mapToGlobal(middle), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    // Only what comes from the window system goes on to the widgets below.
    QSpontaneKeyEvent::setSpontaneous(&event);
    QCoreApplication::instance()->notify(&widget, &event);
}

TEST_F(SettingsViewTest, WheelOverASliderScrollsTheFormAndChangesNothing) {
    auto& form = child<QScrollArea>(*sheet, "settingsForm");
    auto& slider = child<QSlider>(*sheet, "minElevation");
    sheet->resize(520, 400);
    QTest::qWait(0);
    turnWheelOver(slider);
    EXPECT_EQ(state->minAutoTrackElevation, 5);
    EXPECT_GT(form.verticalScrollBar()->value(), 0);
}

TEST_F(SettingsViewTest, WheelTurnsTheSliderThatHasTheFocus) {
    auto& slider = child<QSlider>(*sheet, "minElevation");
    sheet->activateWindow();
    slider.setFocus();
    ASSERT_TRUE(slider.hasFocus());
    turnWheelOver(slider);
    EXPECT_LT(state->minAutoTrackElevation, 5);
}

TEST_F(SettingsViewTest, NothingElseInTheFormTurnsWithTheWheel) {
    EXPECT_TRUE(sheet->findChildren<QComboBox*>().isEmpty());
    EXPECT_EQ(sheet->findChildren<QSlider*>().size(), 2);
}

/// The controls that Tab reaches, in order.
std::vector<QWidget*> tabStops(QWidget& sheet) {
    std::vector<QWidget*> stops;
    for (QWidget* w = sheet.nextInFocusChain(); w != &sheet; w = w->nextInFocusChain()) {
        if (w->focusPolicy() & Qt::TabFocus && w->isVisibleTo(&sheet)) stops.push_back(w);
    }
    return stops;
}

TEST_F(SettingsViewTest, TabGoesDownTheFormThenToTheButtons) {
    click("obs2Enabled");
    sheet->refresh();
    const auto stops = tabStops(*sheet);
    const std::vector<QString> expected{
        "obsName",        "obsLatitude",        "obsLongitude", "obsAltitude", "obsGrid",
        "obsFromGrid",    "useMyLocation",      "obs2Enabled",  "obs2Name",    "obs2Latitude",
        "obs2Longitude",  "obs2Grid",           "obs2FromGrid", "rigHost",     "rigPort",
        "rigAutoConnect", "forceClassicRigctld"};
    ASSERT_GT(stops.size(), expected.size() + 2);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(stops[i]->objectName(), expected[i]) << i;
    }
    EXPECT_EQ(stops[stops.size() - 2]->objectName(), "cancelButton");
    EXPECT_EQ(stops.back()->objectName(), "applyButton");
    int above = -1;
    for (std::size_t i = 0; i + 2 < stops.size(); ++i) {
        const int y = stops[i]->mapTo(sheet.data(), QPoint(0, stops[i]->height())).y();
        EXPECT_GE(y + 12, above) << stops[i]->objectName().toStdString();
        above = y;
    }
}

TEST_F(SettingsViewTest, EveryControlHasANameOfItsOwn) {
    state->userSources().add({UniqueId::make().text(), "CSN", "http://a/x"});
    state->userSources().add({UniqueId::make().text(), "CSN", "http://a/y"});
    sheet->reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    open();
    std::map<QString, QWidget*> spoken;
    int controls = 0;
    for (auto* widget : sheet->findChildren<QWidget*>()) {
        const bool isControl = widget->focusPolicy() & Qt::TabFocus;
        if (!isControl) continue;
        ++controls;
        EXPECT_FALSE(widget->objectName().isEmpty());
        const QString name = QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
        EXPECT_FALSE(name.isEmpty()) << widget->objectName().toStdString();
        EXPECT_TRUE(spoken.emplace(name, widget).second) << name.toStdString();
    }
    EXPECT_GT(controls, 70);
}

TEST_F(SettingsViewTest, TextOfLessWeightIsLegibleInEveryTheme) {
    for (const bool dark : {true, false}) {
        Theme::apply(dark);
        const QColor card = blended(Theme::color(Ink::primary, 0.02), Theme::color(Ink::window));
        for (const Ink ink : {Ink::secondary, Ink::green, Ink::yellow, Ink::red}) {
            EXPECT_GE(contrastRatio(Theme::color(ink), card), Theme::kLegibleContrast)
                << inkName(ink) << (dark ? " dark" : " light");
        }
    }
    Theme::apply(true);
}

}  // namespace
}  // namespace veloran::test
