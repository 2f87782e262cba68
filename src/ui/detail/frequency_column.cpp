#include "ui/detail/frequency_column.h"

#include <QHBoxLayout>
#include <QSpacerItem>
#include <QVBoxLayout>

#include "transmitters/transponder_pair.h"
#include "ui/detail/detail_panel.h"
#include "ui/detail/labeled_values.h"
#include "ui/formats.h"
#include "ui/theme.h"
#include "ui/widgets/badge.h"
#include "ui/widgets/bump_button.h"
#include "ui/widgets/divider.h"
#include "ui/widgets/folding_row.h"
#include "ui/widgets/selectable_value.h"
#include "ui/widgets/value_label.h"

namespace veloran {

namespace {

constexpr TextStyle kOffsetName{14, QFont::Medium, Ink::secondary};
constexpr TextStyle kBigFrequency{24, QFont::Bold, Ink::green};
const QString kFrequencySample = "000.000.000";
const QString kAtSatelliteSample = "000.000000 MHz";
const QString kShiftSample = "+00000 Hz";

/// Eight points between two parts, less where a narrow window folds rows.
void addGap(QVBoxLayout& column) {
    column.addSpacerItem(new QSpacerItem(0, 8, QSizePolicy::Minimum, QSizePolicy::Maximum));
}

QHBoxLayout* bigRow(const QString& name, SelectableValue* value) {
    auto* label = new ValueLabel({16, QFont::Black, Ink::secondary}, name);
    label->alignToFirstBaselineOf(Theme::mono(kBigFrequency.pixels, kBigFrequency.weight));
    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    row->addWidget(label);
    row->addWidget(value);
    row->addStretch();
    return row;
}

}  // namespace

bool showsUplink(const std::optional<Transmitter>& uplink,
                 const std::optional<Transmitter>& downlink, double uplinkHz) {
    return uplinkHz > 0 || (uplink && uplink != downlink);
}

FrequencyColumn::FrequencyColumn(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent), state_(std::move(state)) {
    uplink_ = new QWidget;
    uplink_->setObjectName("uplinkSection");
    auto* uplink = new QVBoxLayout(uplink_);
    uplink->setContentsMargins(0, 0, 0, 0);
    uplink->setSpacing(0);
    uplink->addLayout(makeUplink());
    addGap(*uplink);
    uplink->addWidget(makePassbandRow());

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(DetailPanel::kPadding, DetailPanel::kPadding, DetailPanel::kPadding,
                               DetailPanel::kPadding);
    column->setSpacing(0);
    column->addLayout(makeDownlink());
    addGap(*column);
    column->addWidget(new Divider(Qt::Horizontal));
    addGap(*column);
    column->addWidget(uplink_);
    column->addWidget(makeNoUplink());
    addGap(*column);
    column->addWidget(new Divider(Qt::Horizontal));
    addGap(*column);
    column->addWidget(makeCalibrationRow());
    column->addStretch();
    refresh();
}

void FrequencyColumn::refresh() {
    const auto& downlink = state_->selectedTransmitter.get();
    const auto& uplink = state_->selectedUplinkTransmitter.get();
    const auto centerOf = [](const std::optional<Transmitter>& t) {
        return t ? std::optional(t->centerFreqHz()) : std::nullopt;
    };
    const bool inverting = downlink && downlink->inverting;

    rxFrequency_->setValue(formatBigFreq(state_->currentCorrectedFreq));
    rxAtSatellite_->setText(formatMHz(rxSatOutputFreq(
        centerOf(downlink), state_->currentPassbandOffset, state_->currentSatCalibration)));
    rxDoppler_->setText(formatHzSigned(state_->currentDopplerShift));
    ritPart_->setText(formatHzSigned(state_->currentRIT));
    rit_->setText(formatHzSigned(state_->currentRIT));

    const bool shown = showsUplink(uplink, downlink, uplinkFrequency());
    uplink_->setVisible(shown);
    noUplink_->setVisible(!shown);
    const double txAtSatellite =
        txSatInputFreq(centerOf(uplink), state_->currentPassbandOffset, inverting);
    txFrequency_->setValue(formatBigFreq(state_->currentUplinkFreq));
    txAtSatellite_->setText(formatMHz(txAtSatellite));
    const bool isCorrected = state_->isTracking && uplink && state_->currentUplinkFreq > 0;
    txDoppler_->setText(isCorrected ? formatHzSigned(state_->currentUplinkFreq - txAtSatellite)
                                    : std::string("—"));

    sense_->display(inverting ? "INV" : "STR", inverting ? Ink::orange : Ink::cyan);
    passband_->setText(formatHzSigned(state_->currentPassbandOffset));
    calibration_->setText(formatHzSigned(state_->currentSatCalibration));
    storedOnly_->setVisible(state_->rigProtocolMode == RigProtocolMode::satProtoV1 &&
                            state_->satProtoRestPattern == SatProtoRestPattern::transponderCenter);
}

/// Of the channel shown. A session that is over leaves its last frequency behind, which is none of
/// a channel chosen since that is for reception only.
double FrequencyColumn::uplinkFrequency() const {
    const auto& downlink = state_->selectedTransmitter.get();
    const auto& pass = state_->selectedPass.get();
    const bool hasUplink =
        state_->selectedUplinkTransmitter.get() ||
        (pass && downlink && pairedUplink(pass->satellite->transmitters, downlink->centerFreqHz()));
    return hasUplink ? state_->currentUplinkFreq.get() : 0;
}

QVBoxLayout* FrequencyColumn::makeDownlink() {
    rxFrequency_ = new SelectableValue(kBigFrequency, kFrequencySample);
    rxFrequency_->setObjectName("rxFrequency");
    rxFrequency_->setAccessibleName(tr("Receive frequency"));

    auto* breakdown = new FoldingRow(10, 2);
    breakdown->first()->addLayout(
        breakdownPart("@sat", tr("Receive at satellite"), kAtSatelliteSample, rxAtSatellite_));
    breakdown->first()->addLayout(
        breakdownPart("doppler", tr("Receive Doppler"), kShiftSample, rxDoppler_));
    breakdown->first()->addStretch();
    breakdown->second()->addLayout(breakdownPart("RIT", tr("Receive RIT"), kShiftSample, ritPart_));
    breakdown->second()->addStretch();
    rxAtSatellite_->setObjectName("rxAtSatellite");
    rxDoppler_->setObjectName("rxDoppler");
    ritPart_->setObjectName("ritPart");

    auto* row = new QHBoxLayout;
    row->setSpacing(4);
    row->addWidget(new ValueLabel(kOffsetName, "RIT"));
    addBumps(
        *row, "rit",
        {{"−100", "Minus100", -100},
         {"−10", "Minus10", -10},
         {"0", "Zero", 0},
         {"+10", "Plus10", 10},
         {"+100", "Plus100", 100}},
        [this](double hz) { state_->bumpRIT(hz); }, [this] { state_->clearRIT(); });
    row->addWidget(rit_ = makeOffsetValue("rit", Ink::yellow));
    row->addStretch();

    auto* section = new QVBoxLayout;
    section->setSpacing(2);
    section->addLayout(bigRow("RX", rxFrequency_));
    section->addWidget(breakdown);
    section->addLayout(row);
    return section;
}

QVBoxLayout* FrequencyColumn::makeUplink() {
    TextStyle style = kBigFrequency;
    style.ink = Ink::orange;
    txFrequency_ = new SelectableValue(style, kFrequencySample);
    txFrequency_->setObjectName("txFrequency");
    txFrequency_->setAccessibleName(tr("Transmit frequency"));
    auto* note = new ValueLabel({14, QFont::Normal, Ink::secondary}, tr("auto from RX"));
    note->alignToFirstBaselineOf(Theme::mono(style.pixels, style.weight));
    note->setElastic();
    auto* top = bigRow("TX", txFrequency_);
    top->addWidget(note);

    auto* breakdown = new QHBoxLayout;
    breakdown->setSpacing(10);
    breakdown->addLayout(
        breakdownPart("@sat", tr("Transmit at satellite"), kAtSatelliteSample, txAtSatellite_));
    breakdown->addLayout(
        breakdownPart("doppler", tr("Transmit Doppler"), kShiftSample, txDoppler_));
    breakdown->addStretch();
    txAtSatellite_->setObjectName("txAtSatellite");
    txDoppler_->setObjectName("txDoppler");

    auto* section = new QVBoxLayout;
    section->setSpacing(2);
    section->addLayout(top);
    section->addLayout(breakdown);
    return section;
}

QWidget* FrequencyColumn::makePassbandRow() {
    auto* widget = new QWidget;
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(new ValueLabel(kOffsetName, "TIT"));
    row->addWidget(sense_ = new Badge({12, 3, 2, 1}, tr("Transponder sense")));
    sense_->setObjectName("transponderSense");
    addBumps(
        *row, "tit",
        {{"−1k", "Minus1k", -1000},
         {"−100", "Minus100", -100},
         {"0", "Zero", 0},
         {"+100", "Plus100", 100},
         {"+1k", "Plus1k", 1000}},
        [this](double hz) { state_->bumpPassbandOffset(hz); },
        [this] { state_->clearPassbandOffset(); });
    row->addWidget(passband_ = makeOffsetValue("tit", Ink::cyan));
    row->addStretch();
    return widget;
}

QWidget* FrequencyColumn::makeCalibrationRow() {
    auto* name = new ValueLabel(kOffsetName, "TXP");
    name->setObjectName("txpName");
    name->setToolTip(tr(
        "Transponder cal — per (sat, transponder). Applied in Pattern B (selectedDL); stored only "
        "in Pattern A (transponderCenter)."));
    auto* row = new FoldingRow(4, 2);
    row->first()->addWidget(name);
    addBumps(
        *row->first(), "txp",
        {{"−1k", "Minus1k", -1000},
         {"−100", "Minus100", -100},
         {"−10", "Minus10", -10},
         {"0", "Zero", 0},
         {"+10", "Plus10", 10},
         {"+100", "Plus100", 100},
         {"+1k", "Plus1k", 1000}},
        [this](double hz) { state_->bumpSatCalibration(hz); },
        [this] { state_->clearCalibration(); });
    row->first()->addStretch();

    auto* save = new BumpButton(tr("Save"));
    save->setFont(Theme::face(13));
    save->setObjectName("txpSave");
    save->setAccessibleName(tr("Save transponder calibration"));
    connect(save, &QPushButton::clicked, this, [this] { state_->saveSatCalibration(); });
    storedOnly_ = new ValueLabel({11, QFont::Normal, Ink::orange}, tr("(stored only)"));
    storedOnly_->setObjectName("storedOnly");
    row->second()->addWidget(save);
    row->second()->addWidget(calibration_ = makeOffsetValue("txp", Ink::cyan));
    row->third()->addWidget(storedOnly_);
    row->third()->addStretch();
    row->second()->addStretch();
    return row;
}

QWidget* FrequencyColumn::makeNoUplink() {
    noUplink_ = new QWidget;
    noUplink_->setObjectName("noUplink");
    auto* row = new QHBoxLayout(noUplink_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    auto* name = new ValueLabel({15, QFont::Medium, Ink::secondary}, "TX");
    name->alignToFirstBaselineOf(Theme::mono(16));
    row->addWidget(name);
    row->addWidget(
        new ValueLabel({16, QFont::Normal, Ink::secondary, 0.5}, tr("— (no paired uplink)")));
    row->addStretch();
    return noUplink_;
}

void FrequencyColumn::addBumps(QHBoxLayout& row, const QString& offset,
                               const std::vector<Bump>& bumps, std::function<void(double)> bump,
                               std::function<void()> clear) {
    for (const Bump& b : bumps) {
        auto* button = new BumpButton(QString::fromUtf8(b.text));
        button->setObjectName(offset + b.name);
        button->setAccessibleName(b.hz == 0 ? tr("%1 to zero").arg(offset.toUpper())
                                            : tr("%1 by %2 Hz").arg(offset.toUpper()).arg(b.hz));
        connect(button, &QPushButton::clicked, this, [hz = b.hz, bump, clear] {
            if (hz == 0) {
                clear();
            } else {
                bump(hz);
            }
        });
        row.addWidget(button);
    }
}

ValueLabel* FrequencyColumn::makeOffsetValue(const QString& offset, Ink ink) const {
    constexpr int kWidth = 100;
    constexpr int kLeastWidth = 56;
    auto* value = new ValueLabel({15, QFont::Normal, ink});
    value->setObjectName(offset + "Value");
    value->setAccessibleName(tr("%1 offset").arg(offset.toUpper()));
    value->setWidthRange(kLeastWidth, kWidth);
    value->setAlignment(Qt::AlignRight);
    return value;
}

}  // namespace veloran
