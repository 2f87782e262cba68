#include "ui/detail/frequency_column.h"

#include <QPushButton>
#include <functional>

#include "../ui_fixture.h"
#include "ui/widgets/badge.h"
#include "ui/widgets/selectable_value.h"

namespace veloran::test {
namespace {

class FrequencyColumnTest : public UiFixture {
  protected:
    void trackPair(bool inverting) {
        const Transmitter down = channel("down", 145.95e6, "USB", inverting);
        const Transmitter up = channel("up", 435.15e6, "LSB");
        const auto satellite = addSatellite("FO-29", 24278, {passAt(start)}, {down, up});
        select(satellite, down);
        state->startTracking(satellite, down);
        column.refresh();
    }
    QString big(const char* name) { return child<SelectableValue>(column, name).text(); }
    void press(const char* name) {
        child<QPushButton>(column, name).click();
        column.refresh();
    }

    void expectToFitTheSmallestWindow() {
        column.refresh();
        // What a window of 1050 leaves between the two outer columns and their dividers.
        column.resize(1050 - 400 - 320 - 2, 240);
        column.show();
        QTest::qWait(0);
        EXPECT_LE(column.minimumSizeHint().width(), column.width());
        const QRect inside = column.rect().adjusted(10, 10, -10, -10);
        for (const QWidget* w : column.findChildren<QWidget*>()) {
            if (!w->isVisible() || w->objectName().isEmpty()) continue;
            const QRect placed(w->mapTo(&column, QPoint(0, 0)), w->size());
            EXPECT_TRUE(inside.contains(placed)) << w->objectName().toStdString();
            EXPECT_GE(w->height(), std::min(w->minimumSizeHint().height(), w->maximumHeight()))
                << w->objectName().toStdString();
        }
    }

    FrequencyColumn column{state};
};

TEST_F(FrequencyColumnTest, WithoutAPassTheBigFrequencyIsADash) {
    EXPECT_EQ(big("rxFrequency"), "—");
    EXPECT_EQ(textOf(column, "rxAtSatellite"), "—");
    EXPECT_EQ(textOf(column, "rxDoppler"), "0 Hz");
    EXPECT_TRUE(isShown(column, "noUplink"));
    EXPECT_FALSE(isShown(column, "uplinkSection"));
}

TEST_F(FrequencyColumnTest, ReceiveOnlyTransmitterHidesTheUplinkAndItsOffset) {
    state->selectedTransmitter = channel("down", 145.8e6);
    state->selectedUplinkTransmitter = state->selectedTransmitter;
    column.refresh();
    EXPECT_TRUE(isShown(column, "noUplink"));
    EXPECT_FALSE(isShown(column, "titPlus100"));
    state->currentUplinkFreq = 1;
    column.refresh();
    EXPECT_TRUE(isShown(column, "uplinkSection")) << "a frequency is always worth showing";
}

TEST_F(FrequencyColumnTest, AnotherUplinkShowsEvenWithoutAFrequency) {
    state->selectedTransmitter = channel("down", 145.8e6);
    state->selectedUplinkTransmitter = channel("up", 435.1e6);
    column.refresh();
    EXPECT_TRUE(isShown(column, "uplinkSection"));
    EXPECT_EQ(big("txFrequency"), "—");
}

TEST_F(FrequencyColumnTest, ChannelWithoutAnUplinkShowsThatItHasNone) {
    const Transmitter down = channel("down", 145.8e6);
    select(addSatellite("ISS", 25544, {passAt(start)}, {down}), down);
    state->startTracking(state->selectedPass.get()->satellite, down);
    state->updateTracking();
    column.refresh();
    EXPECT_TRUE(isShown(column, "noUplink"));
    EXPECT_FALSE(isShown(column, "uplinkSection"));
    EXPECT_FALSE(isShown(column, "titPlus100"));
    state->stopTracking();
    state->currentUplinkFreq = 435.1e6;  // left from a session before
    column.refresh();
    EXPECT_TRUE(isShown(column, "noUplink"));
}

TEST_F(FrequencyColumnTest, TransmitDopplerIsADashBeforeAndAfterTheSession) {
    const Transmitter down = channel("down", 145.95e6);
    const Transmitter up = channel("up", 435.31e6);
    const auto satellite = addSatellite("FO-29", 24278, {passAt(start)}, {down, up});
    select(satellite, down);
    column.refresh();
    EXPECT_EQ(textOf(column, "txDoppler"), "—");
    EXPECT_EQ(textOf(column, "txAtSatellite"), "435.310000 MHz");
    state->startTracking(satellite, down);
    column.refresh();
    EXPECT_EQ(textOf(column, "txDoppler"), "—") << "before the first tick";
    state->currentUplinkFreq = 435.311e6;
    column.refresh();
    EXPECT_EQ(textOf(column, "txDoppler"), "+1000 Hz");
    state->stopTracking();
    column.refresh();
    EXPECT_TRUE(isShown(column, "uplinkSection"));
    EXPECT_EQ(big("txFrequency"), "435.311.000") << "where the radio was left";
    EXPECT_EQ(textOf(column, "txDoppler"), "—");
    select(satellite, down);
    column.refresh();
    EXPECT_EQ(textOf(column, "txDoppler"), "—");
}

TEST_F(FrequencyColumnTest, OffsetOfAnInvertingPairMovesItsEndsApart) {
    trackPair(true);
    EXPECT_EQ(textOf(column, "rxAtSatellite"), "145.950000 MHz");
    EXPECT_EQ(textOf(column, "txAtSatellite"), "435.150000 MHz");
    press("titPlus1k");
    EXPECT_EQ(textOf(column, "rxAtSatellite"), "145.951000 MHz");
    EXPECT_EQ(textOf(column, "txAtSatellite"), "435.149000 MHz");
    const auto& badge = child<Badge>(column, "transponderSense");
    EXPECT_EQ(badge.text(), "INV");
    EXPECT_EQ(badge.ink(), Ink::orange);
}

TEST_F(FrequencyColumnTest, OffsetOfAStraightPairMovesBothTheSameWay) {
    trackPair(false);
    press("titPlus1k");
    EXPECT_EQ(textOf(column, "rxAtSatellite"), "145.951000 MHz");
    EXPECT_EQ(textOf(column, "txAtSatellite"), "435.151000 MHz");
    const auto& badge = child<Badge>(column, "transponderSense");
    EXPECT_EQ(badge.text(), "STR");
    EXPECT_EQ(badge.ink(), Ink::cyan);
}

TEST_F(FrequencyColumnTest, NumbersOfTheTickShow) {
    trackPair(true);
    state->currentCorrectedFreq = 145951157.6;
    state->currentDopplerShift = 1157.6;
    state->currentUplinkFreq = 435146543;
    state->currentRIT = -0.4;
    column.refresh();
    EXPECT_EQ(big("rxFrequency"), "145.951.157");
    EXPECT_EQ(textOf(column, "rxDoppler"), "+1158 Hz");
    EXPECT_EQ(textOf(column, "ritPart"), "0 Hz");
    EXPECT_EQ(textOf(column, "ritValue"), "0 Hz");
    EXPECT_EQ(big("txFrequency"), "435.146.543");
    EXPECT_EQ(textOf(column, "txDoppler"), "-3457 Hz");
}

TEST_F(FrequencyColumnTest, EveryBumpButtonMovesItsOffsetByItsStep) {
    trackPair(true);
    struct Step {
        const char* button;
        const char* label;
        const Published<double>* offset;
        double hz;
    };
    const Step steps[] = {
        {"ritMinus100", "−100", &state->currentRIT, -100},
        {"ritMinus10", "−10", &state->currentRIT, -10},
        {"ritPlus10", "+10", &state->currentRIT, 10},
        {"ritPlus100", "+100", &state->currentRIT, 100},
        {"titMinus1k", "−1k", &state->currentPassbandOffset, -1000},
        {"titMinus100", "−100", &state->currentPassbandOffset, -100},
        {"titPlus100", "+100", &state->currentPassbandOffset, 100},
        {"titPlus1k", "+1k", &state->currentPassbandOffset, 1000},
        {"txpMinus1k", "−1k", &state->currentSatCalibration, -1000},
        {"txpMinus100", "−100", &state->currentSatCalibration, -100},
        {"txpMinus10", "−10", &state->currentSatCalibration, -10},
        {"txpPlus10", "+10", &state->currentSatCalibration, 10},
        {"txpPlus100", "+100", &state->currentSatCalibration, 100},
        {"txpPlus1k", "+1k", &state->currentSatCalibration, 1000},
    };
    for (const Step& step : steps) {
        const double before = *step.offset;
        press(step.button);
        EXPECT_EQ(*step.offset - before, step.hz) << step.button;
        EXPECT_EQ(child<QPushButton>(column, step.button).text(), QString::fromUtf8(step.label));
        EXPECT_GE(child<QPushButton>(column, step.button).sizeHint().width(), 28);
    }
}

TEST_F(FrequencyColumnTest, ZeroButtonsClearTheirOffset) {
    trackPair(true);
    for (const auto& [bump, zero, offset] :
         {std::tuple{"ritPlus10", "ritZero", &state->currentRIT},
          {"titPlus100", "titZero", &state->currentPassbandOffset},
          {"txpPlus10", "txpZero", &state->currentSatCalibration}}) {
        press(bump);
        EXPECT_NE(offset->get(), 0) << bump;
        press(zero);
        EXPECT_EQ(offset->get(), 0) << zero;
    }
}

TEST_F(FrequencyColumnTest, SaveKeepsTheCalibrationForTheNextSession) {
    trackPair(true);
    press("txpPlus100");
    press("txpPlus10");
    press("txpSave");
    const SatellitePtr satellite = state->trackingSatellite;
    state->stopTracking();
    state->startTracking(satellite, satellite->transmitters[0]);
    column.refresh();
    EXPECT_EQ(textOf(column, "txpValue"), "+110 Hz");
}

TEST_F(FrequencyColumnTest, CalibrationExplainsItself) {
    EXPECT_EQ(child<QWidget>(column, "txpName").toolTip(),
              "Transponder cal — per (sat, transponder). Applied in Pattern B (selectedDL); stored "
              "only in Pattern A (transponderCenter).");
}

TEST_F(FrequencyColumnTest, StoredOnlyShowsForTheTransponderCentreOfASatProtoRadio) {
    const auto shows = [&](RigProtocolMode mode, SatProtoRestPattern pattern) {
        state->rigProtocolMode = mode;
        state->satProtoRestPattern = pattern;
        column.refresh();
        return isShown(column, "storedOnly");
    };
    using enum SatProtoRestPattern;
    EXPECT_TRUE(shows(RigProtocolMode::satProtoV1, transponderCenter));
    EXPECT_FALSE(shows(RigProtocolMode::satProtoV1, selectedDL));
    EXPECT_FALSE(shows(RigProtocolMode::classic, transponderCenter));
    EXPECT_FALSE(shows(RigProtocolMode::classic, selectedDL));
    EXPECT_FALSE(shows(RigProtocolMode::unknown, transponderCenter));
}

TEST_F(FrequencyColumnTest, NoteMovesNothingInAWindowOfUsualSize) {
    trackPair(true);
    column.resize(1200 - 400 - 320 - 2, 240);
    column.show();
    const auto placeOfSave = [&] {
        column.refresh();
        for (int turn = 0; turn < 5; ++turn) QTest::qWait(0);
        const auto& save = child<QPushButton>(column, "txpSave");
        const auto& bump = child<QPushButton>(column, "txpPlus1k");
        EXPECT_EQ(save.mapTo(&column, QPoint()).y(), bump.mapTo(&column, QPoint()).y());
        return save.mapTo(&column, QPoint()).x();
    };
    const int without = placeOfSave();
    state->rigProtocolMode = RigProtocolMode::satProtoV1;
    state->satProtoRestPattern = SatProtoRestPattern::transponderCenter;
    EXPECT_EQ(placeOfSave(), without);
    EXPECT_TRUE(isShown(column, "storedOnly"));
}

TEST_F(FrequencyColumnTest, NothingIsCutOffInTheSmallestWindow) {
    trackPair(true);
    state->rigProtocolMode = RigProtocolMode::satProtoV1;
    state->satProtoRestPattern = SatProtoRestPattern::transponderCenter;
    state->currentCorrectedFreq = 435651544;
    state->currentUplinkFreq = 145951157;
    expectToFitTheSmallestWindow();
}

TEST_F(FrequencyColumnTest, LongNumbersFitTheSmallestWindowToo) {
    trackPair(true);
    state->currentUplinkFreq = 435026544;
    state->currentCorrectedFreq = 10489750123;
    state->currentPassbandOffset = -123456;
    state->currentDopplerShift = -123456;
    state->currentRIT = -123456;
    expectToFitTheSmallestWindow();
}

}  // namespace
}  // namespace veloran::test
