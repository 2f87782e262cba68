#include "ui/detail/rig_column.h"

#include <QPushButton>

#include "../ui_fixture.h"
#include "ui/theme.h"
#include "ui/widgets/badge.h"
#include "ui/widgets/color_dot.h"
#include "ui/widgets/text_button.h"

namespace veloran::test {
namespace {

class RigColumnTest : public UiFixture {
  protected:
    SatellitePtr addIss() {
        return addSatellite("ISS", 25544, {passAt(start)}, {channel("down", 145.8e6)});
    }
    RigColumn column{state};
};

TEST_F(RigColumnTest, LinkShowsItsState) {
    EXPECT_EQ(textOf(column, "rigConnection"), "Disconnected");
    EXPECT_EQ(child<ColorDot>(column, "rigDot").color(), Theme::color(Ink::red));
    EXPECT_EQ(textOf(column, "rigEndpoint"), "localhost:4532");
    EXPECT_FALSE(isShown(column, "rigStatus"));
    state->rigConnected = true;
    state->rigHost = "shack.local";
    state->rigPort = 14532;
    column.refresh();
    EXPECT_EQ(textOf(column, "rigConnection"), "Connected");
    EXPECT_EQ(child<ColorDot>(column, "rigDot").color(), Theme::color(Ink::green));
    EXPECT_EQ(textOf(column, "rigEndpoint"), "shack.local:14532") << "without grouping";
}

TEST_F(RigColumnTest, BadgeNamesTheDialectInItsColour) {
    const auto& badge = child<Badge>(column, "rigProtocol");
    for (const auto& [mode, text, ink] :
         {std::tuple{RigProtocolMode::unknown, "—", Ink::secondary},
          {RigProtocolMode::classic, "Classic", Ink::gray},
          {RigProtocolMode::satProtoV1, "SAT_PROTO v1", Ink::cyan}}) {
        state->rigProtocolMode = mode;
        column.refresh();
        EXPECT_EQ(badge.text(), QString::fromUtf8(text));
        EXPECT_EQ(badge.ink(), ink);
    }
}

TEST_F(RigColumnTest, LinkRowExplainsTheProtocol) {
    EXPECT_EQ(child<QWidget>(column, "rigLink").toolTip(),
              "Protocol auto-detected from rigctld; SAT_PROTO sends rest_hz and Doppler as "
              "separate fields.");
}

TEST_F(RigColumnTest, MessageOfTheRadioShows) {
    state->rigSatProtoStatus = "Re-armed (radio was claimed by another client)";
    column.refresh();
    EXPECT_TRUE(isShown(column, "rigStatus"));
    EXPECT_EQ(textOf(column, "rigStatus"), "Re-armed (radio was claimed by another client)");
}

TEST_F(RigColumnTest, TrackStartsTheSelectedPassAndStopEndsIt) {
    auto& track = child<QPushButton>(column, "trackButton");
    auto& stop = child<QPushButton>(column, "stopButton");
    EXPECT_FALSE(track.isEnabled());
    EXPECT_FALSE(stop.isEnabled());
    EXPECT_FALSE(isShown(column, "sessionGrid"));

    const auto iss = addIss();
    select(iss, iss->transmitters[0]);
    column.refresh();
    ASSERT_TRUE(track.isEnabled()) << "also without a radio";
    EXPECT_FALSE(stop.isEnabled()) << "nothing to end";
    track.click();
    column.refresh();
    EXPECT_TRUE(state->isTracking);
    EXPECT_EQ(state->trackingSatellite.get(), iss);
    EXPECT_EQ(state->selectedTransmitter->value(), iss->transmitters[0]);
    EXPECT_TRUE(isShown(column, "sessionGrid"));
    EXPECT_TRUE(track.isEnabled());

    ASSERT_TRUE(stop.isEnabled());
    stop.click();
    column.refresh();
    EXPECT_FALSE(state->isTracking);
    EXPECT_FALSE(isShown(column, "sessionGrid"));
}

TEST_F(RigColumnTest, TrackTakesTheChannelThatIsSelected) {
    // So near to each other that the memory of one may mean the other.
    const auto iss = addSatellite("ISS", 25544, {passAt(start)},
                                  {channel("down", 145.8e6), channel("down", 145.8009e6)});
    select(iss, iss->transmitters[1]);
    column.refresh();
    child<QPushButton>(column, "trackButton").click();
    EXPECT_EQ(state->selectedTransmitter->value(), iss->transmitters[1]);
}

TEST_F(RigColumnTest, TextOfTrackIsLegibleAllOverTheButtonInEveryTheme) {
    const auto iss = addIss();
    select(iss, iss->transmitters[0]);
    column.refresh();
    auto& track = child<QPushButton>(column, "trackButton");
    for (const bool dark : {true, false}) {
        Theme::apply(dark);
        for (const bool down : {false, true}) {
            track.setDown(down);
            const QImage image = track.grab().toImage();
            // Left of the icon, from top to bottom: the ground alone.
            for (int y = 4; y < image.height() - 4; ++y) {
                EXPECT_GE(contrastRatio(image.pixelColor(4, y), Theme::color(Ink::control)),
                          Theme::kLegibleContrast)
                    << (dark ? "dark" : "light") << ", row " << y << (down ? ", pressed" : "");
            }
        }
    }
    Theme::apply(true);
}

TEST_F(RigColumnTest, SessionShowsTheFiguresOfTheTick) {
    state->startTracking(addIss(), std::nullopt);
    state->currentAzimuth = 231.44;
    state->currentElevation = 5.06;
    state->currentRange = 1234.4;
    state->currentDopplerRate = -61.25;
    state->dopplerUpdateHz = 20;
    column.refresh();
    EXPECT_EQ(textOf(column, "sessionAzimuth"), "231.4°");
    EXPECT_EQ(textOf(column, "sessionElevation"), "5.1°");
    EXPECT_EQ(textOf(column, "sessionRange"), "1234 km");
    EXPECT_EQ(textOf(column, "sessionRate"), "-61.2 Hz/s");
    EXPECT_EQ(textOf(column, "sessionUpdate"), "20 Hz");
}

TEST_F(RigColumnTest, ResetClearsTheCalibration) {
    state->startTracking(addIss(), std::nullopt);
    state->bumpSatCalibration(300);
    column.refresh();
    child<TextButton>(column, "resetCalButton").click();
    EXPECT_EQ(state->currentSatCalibration, 0);
}

TEST_F(RigColumnTest, EverythingFitsItsHeightDuringASession) {
    state->startTracking(addIss(), std::nullopt);
    state->rigSatProtoStatus = "Re-armed (radio was claimed by another client)";
    column.refresh();
    column.resize(320, 240);
    column.show();
    QTest::qWait(0);
    EXPECT_LE(column.minimumSizeHint().height(), 240);
    EXPECT_LE(column.minimumSizeHint().width(), 320);
}

}  // namespace
}  // namespace veloran::test
