#include "ui/detail/pass_column.h"

#include <QApplication>
#include <QWheelEvent>

#include "../ui_fixture.h"
#include "ui/widgets/choice_box.h"

namespace veloran::test {
namespace {

class PassColumnTest : public UiFixture {
  protected:
    ChoiceBox& picker() { return child<ChoiceBox>(column, "transponderPicker"); }
    void choose(int index) {
        picker().setCurrentIndex(index);
        emit picker().activated(index);
        column.refresh();
    }

    PassColumn column{state};
    const Transmitter voice = channel("down", 145.8e6);
    const Transmitter uplink = channel("up", 435.15e6, "LSB");
    const Transmitter downlink = channel("down", 145.95e6, "USB", true);
};

TEST_F(PassColumnTest, WithoutAPassOnlyThePromptShows) {
    EXPECT_TRUE(isShown(column, "passPrompt"));
    EXPECT_FALSE(isShown(column, "passDetails"));
    EXPECT_EQ(textOf(column, "passPrompt"), "Click a pass to see details");
}

TEST_F(PassColumnTest, SelectedPassShowsItsFigures) {
    const Instant rise = Instant{817000000.0};  // 2026-11-22 00:26:40 UTC
    const auto iss = addSatellite("ISS (ZARYA)", 25544, {passAt(rise, 605.9, 45.26)});
    select(iss, std::nullopt);
    column.refresh();
    EXPECT_FALSE(isShown(column, "passPrompt"));
    EXPECT_EQ(textOf(column, "passSatellite"), "ISS (ZARYA)");
    EXPECT_EQ(textOf(column, "passNorad"), "NORAD 25544");
    EXPECT_EQ(textOf(column, "passRise"), "00:26:40 UTC");
    EXPECT_EQ(textOf(column, "passPeak"), "00:31:42 UTC");
    EXPECT_EQ(textOf(column, "passSet"), "00:36:45 UTC");
    EXPECT_EQ(textOf(column, "passMaxElevation"), "45.3°");
    EXPECT_EQ(textOf(column, "passDirection"), "E → W");
    EXPECT_EQ(textOf(column, "passDuration"), "10m 05s");
    EXPECT_FALSE(isShown(column, "transponderPicker")) << "a satellite without channels";
}

TEST_F(PassColumnTest, AnotherPassTakesThePlaceOfTheOneBefore) {
    const auto iss = addSatellite("ISS", 25544, {passAt(start), passAt(start + 6000, 300, 12)});
    const auto so50 = addSatellite("SO-50", 27607, {passAt(start + 60)});
    select(iss, std::nullopt);
    column.refresh();
    state->selectedPass = PassInfo{.satellite = iss, .pass = iss->passes->at(1), .transmitter = {}};
    column.refresh();
    EXPECT_EQ(textOf(column, "passMaxElevation"), "12.0°");
    EXPECT_EQ(textOf(column, "passDuration"), "5m 00s");
    select(so50, std::nullopt);
    column.refresh();
    EXPECT_EQ(textOf(column, "passSatellite"), "SO-50");
}

TEST_F(PassColumnTest, PickerOffersPairsThenSinglesAndShowsTheSelectedOne) {
    const auto fo29 = addSatellite("FO-29", 24278, {passAt(start)}, {voice, downlink, uplink});
    select(fo29, downlink);
    column.refresh();
    ASSERT_EQ(picker().count(), 2);
    EXPECT_EQ(picker().itemText(0), "Voice (435.150 ↑ / 145.950 ↓)");
    EXPECT_EQ(picker().currentIndex(), 0);
    EXPECT_TRUE(isShown(column, "invertingNote"));
    state->selectTransmitter(voice, fo29);
    column.refresh();
    EXPECT_EQ(picker().currentIndex(), 1);
    EXPECT_FALSE(isShown(column, "invertingNote"));
}

TEST_F(PassColumnTest, ChannelThatIsNotOfferedShowsTheFirstChoice) {
    const auto fo29 = addSatellite("FO-29", 24278, {passAt(start)}, {voice, downlink, uplink});
    select(fo29, channel("down", 1));
    column.refresh();
    EXPECT_EQ(picker().currentIndex(), 0);
}

TEST_F(PassColumnTest, ChoosingSelectsTheDownlink) {
    const auto fo29 = addSatellite("FO-29", 24278, {passAt(start)}, {voice, downlink, uplink});
    select(fo29, downlink);
    column.refresh();
    choose(1);
    EXPECT_EQ(state->selectedTransmitter->value(), voice);
    choose(0);
    EXPECT_EQ(state->selectedTransmitter->value(), downlink);
    EXPECT_FALSE(state->isTracking);
}

TEST_F(PassColumnTest, WheelOverThePickerRetunesNothing) {
    const auto fo29 = addSatellite("FO-29", 24278, {passAt(start)}, {voice, downlink, uplink});
    select(fo29, downlink);
    column.refresh();
    column.show();
    for (const int turn : {-120, 120}) {
        QWheelEvent wheel(QPointF(5, 5), picker().mapToGlobal(QPointF(5, 5)), {}, {0, turn},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&picker(), &wheel);
        EXPECT_EQ(state->selectedTransmitter->value(), downlink);
        EXPECT_EQ(picker().currentIndex(), 0);
    }
}

TEST_F(PassColumnTest, OfChoicesWithOneDownlinkTheFirstShows) {
    const auto twice = addSatellite("ISS", 25544, {passAt(start)},
                                    {voice, channel("down", voice.centerFreqHz(), "CW")});
    select(twice, voice);
    column.refresh();
    ASSERT_EQ(picker().count(), 2);
    choose(1);
    EXPECT_EQ(picker().currentIndex(), 0);
}

TEST_F(PassColumnTest, ChannelsThatArriveLaterAreOffered) {
    const auto fo29 = addSatellite("FO-29", 24278, {passAt(start)});
    select(fo29, std::nullopt);
    column.refresh();
    EXPECT_FALSE(isShown(column, "transponderPicker"));
    fo29->transmitters = {voice};
    column.refresh();
    EXPECT_TRUE(isShown(column, "transponderPicker"));
    EXPECT_EQ(picker().count(), 1);
}

TEST_F(PassColumnTest, LongNameLeavesTheColumnAsItIs) {
    const auto longName =
        addSatellite(std::string(200, 'W'), 99999, {passAt(start)}, {voice, downlink, uplink});
    select(longName, downlink);
    column.refresh();
    column.resize(400, 240);
    column.show();
    QTest::qWait(0);
    EXPECT_LE(column.minimumSizeHint().width(), 400);
    EXPECT_LE(column.minimumSizeHint().height(), 240);
}

}  // namespace
}  // namespace veloran::test
