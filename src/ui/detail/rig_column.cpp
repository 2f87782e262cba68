#include "ui/detail/rig_column.h"

#include <QGridLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/commands.h"
#include "ui/detail/detail_panel.h"
#include "ui/detail/labeled_values.h"
#include "ui/formats.h"
#include "ui/q_text.h"
#include "ui/symbol_icon.h"
#include "ui/theme.h"
#include "ui/widgets/badge.h"
#include "ui/widgets/color_dot.h"
#include "ui/widgets/prominent_button.h"
#include "ui/widgets/text_button.h"
#include "ui/widgets/value_label.h"

namespace veloran {

namespace {

Ink protocolInk(RigProtocolMode mode) {
    switch (mode) {
        case RigProtocolMode::satProtoV1:
            return Ink::cyan;
        case RigProtocolMode::classic:
            return Ink::gray;
        case RigProtocolMode::unknown:
            break;
    }
    return Ink::secondary;
}

void dressSessionButton(QPushButton& button, const char* name) {
    button.setObjectName(name);
    button.setFont(Theme::mono(16, QFont::Bold));
    button.setIconSize({16, 16});
    button.setAutoDefault(false);
}

}  // namespace

RigColumn::RigColumn(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent), state_(std::move(state)) {
    rigStatus_ = new ValueLabel({11, QFont::Normal, Ink::orange});
    rigStatus_->setObjectName("rigStatus");
    rigStatus_->setAccessibleName(tr("Message of the radio"));
    rigStatus_->setElastic();
    endpoint_ = new ValueLabel({14, QFont::Normal, Ink::secondary});
    endpoint_->setObjectName("rigEndpoint");
    endpoint_->setAccessibleName(tr("Radio server"));
    endpoint_->setElastic();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(DetailPanel::kPadding, DetailPanel::kPadding, DetailPanel::kPadding,
                               DetailPanel::kPadding);
    column->setSpacing(6);
    column->addWidget(makeLink());
    column->addWidget(rigStatus_);
    column->addWidget(endpoint_);
    column->addWidget(makeButtons());
    column->addWidget(makeSession());
    column->addStretch();
    refresh();
}

void RigColumn::refresh() {
    linkDot_->setInk(state_->rigConnected ? Ink::green : Ink::red);
    link_->setText(state_->rigConnected ? tr("Connected") : tr("Disconnected"));
    protocol_->display(qText(rawValue(state_->rigProtocolMode)),
                       protocolInk(state_->rigProtocolMode));
    rigStatus_->setVisible(!state_->rigSatProtoStatus->empty());
    rigStatus_->setText(state_->rigSatProtoStatus.get());
    endpoint_->setText(endpointText(state_->rigHost.get(), state_->rigPort));
    track_->setEnabled(state_->selectedPass->has_value());
    stop_->setEnabled(state_->isTracking);

    session_->setVisible(state_->isTracking);
    if (!state_->isTracking) return;
    azimuth_->setText(azimuthText(state_->currentAzimuth));
    elevation_->setText(azimuthText(state_->currentElevation));
    range_->setText(rangeText(state_->currentRange));
    rate_->setText(rateText(state_->currentDopplerRate));
    update_->setText(updateRateText(state_->dopplerUpdateHz));
}

QWidget* RigColumn::makeLink() {
    auto* widget = new QWidget;
    widget->setObjectName("rigLink");
    widget->setToolTip(
        tr("Protocol auto-detected from rigctld; SAT_PROTO sends rest_hz and Doppler as separate "
           "fields."));
    linkDot_ = new ColorDot(8);
    linkDot_->setObjectName("rigDot");
    link_ = new ValueLabel({15});
    link_->setObjectName("rigConnection");
    link_->setAccessibleName(tr("Radio"));
    protocol_ = new Badge({11, 4, 3, 0.6}, tr("Protocol"));
    protocol_->setObjectName("rigProtocol");
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    row->addWidget(linkDot_);
    row->addWidget(link_);
    row->addStretch();
    row->addWidget(protocol_);
    return widget;
}

QWidget* RigColumn::makeButtons() {
    track_ = new ProminentButton("TRACK", Ink::green);
    dressSessionButton(*track_, "trackButton");
    track_->setIcon(symbolIcon(Symbol::play, Ink::control));
    track_->setAccessibleName(tr("Start tracking the selected pass"));
    connect(track_, &QPushButton::clicked, this, [this] { startTrackingSelectedPass(*state_); });
    stop_ = new QPushButton("STOP");
    dressSessionButton(*stop_, "stopButton");
    stop_->setIcon(symbolIcon(Symbol::stop));
    stop_->setAccessibleName(tr("Stop tracking"));
    connect(stop_, &QPushButton::clicked, this, [this] { state_->stopTracking(); });

    auto* widget = new QWidget;
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 4, 0, 0);
    row->setSpacing(8);
    row->addWidget(track_);
    row->addWidget(stop_);
    row->addStretch();
    return widget;
}

QWidget* RigColumn::makeSession() {
    session_ = new QWidget;
    session_->setObjectName("sessionGrid");
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(1);
    grid->setColumnStretch(1, 1);
    const auto addRow = [&](const QString& label, const QString& spoken, const char* name,
                            ValueLabel*& value) {
        const int row = grid->rowCount();
        value = smallValue(spoken);
        value->setObjectName(name);
        value->reserve("+00000.0 Hz/s");
        grid->addWidget(smallLabel(label), row, 0);
        grid->addWidget(value, row, 1);
    };
    addRow(tr("Az"), tr("Azimuth"), "sessionAzimuth", azimuth_);
    addRow(tr("El"), tr("Elevation"), "sessionElevation", elevation_);
    addRow(tr("Range"), tr("Range"), "sessionRange", range_);
    addRow(tr("Rate"), tr("Doppler rate"), "sessionRate", rate_);
    addRow(tr("Update"), tr("Update rate"), "sessionUpdate", update_);

    auto* reset = new TextButton(tr("Reset cal"), {14, QFont::Normal, Ink::red, 0.8});
    reset->setObjectName("resetCalButton");
    reset->setAccessibleName(tr("Reset transponder calibration"));
    connect(reset, &TextButton::clicked, this, [this] { state_->clearCalibration(); });

    auto* column = new QVBoxLayout(session_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addLayout(grid);
    column->addWidget(reset, 0, Qt::AlignLeft);
    return session_;
}

}  // namespace veloran
