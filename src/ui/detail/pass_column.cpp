#include "ui/detail/pass_column.h"

#include <QGridLayout>
#include <QStackedLayout>
#include <QVBoxLayout>

#include "ui/detail/detail_panel.h"
#include "ui/detail/labeled_values.h"
#include "ui/detail/transponder_picker.h"
#include "ui/formats.h"
#include "ui/theme.h"
#include "ui/widgets/color_dot.h"
#include "ui/widgets/value_label.h"

namespace veloran {

PassColumn::PassColumn(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent), state_(std::move(state)) {
    auto* prompt = new ValueLabel({18, QFont::Normal, Ink::secondary, 1, false},
                                  tr("Click a pass to see details"));
    prompt->setObjectName("passPrompt");
    prompt->setAlignment(Qt::AlignHCenter);
    prompt->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    pages_ = new QStackedLayout(this);
    pages_->addWidget(prompt);
    pages_->addWidget(makeDetails());
    refresh();
}

void PassColumn::refresh() {
    const auto& pass = state_->selectedPass.get();
    pages_->setCurrentIndex(pass ? 1 : 0);
    if (!pass) {
        shown_.reset();
        return;
    }
    if (shown_ != pass->id) display(*pass);
    picker_->refresh(pass->satellite);
}

QWidget* PassColumn::makeDetails() {
    auto* details = new QWidget;
    details->setObjectName("passDetails");
    auto* column = new QVBoxLayout(details);
    column->setContentsMargins(DetailPanel::kPadding, DetailPanel::kPadding, DetailPanel::kPadding,
                               DetailPanel::kPadding);
    column->setSpacing(4);
    addHeader(*column);
    addTimes(*column);
    addFigures(*column);
    picker_ = new TransponderPicker(state_);
    column->addWidget(picker_);
    column->addStretch();
    return details;
}

void PassColumn::addHeader(QVBoxLayout& column) {
    dot_ = new ColorDot(10);
    name_ = new ValueLabel({21, QFont::Bold});
    name_->setObjectName("passSatellite");
    name_->setElastic();
    norad_ = new ValueLabel({15, QFont::Normal, Ink::secondary});
    norad_->setObjectName("passNorad");
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(dot_);
    row->addWidget(name_);
    row->addWidget(norad_);
    row->addStretch();
    column.addLayout(row);
}

void PassColumn::addTimes(QVBoxLayout& column) {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(1);
    grid->setColumnStretch(1, 1);
    const auto addRow = [&](const QString& label, ValueLabel*& value) {
        const int row = grid->rowCount();
        value = smallValue(label);
        grid->addWidget(smallLabel(label), row, 0);
        grid->addWidget(value, row, 1);
    };
    addRow(tr("Rise"), rise_);
    addRow(tr("Peak"), peak_);
    addRow(tr("Set"), set_);
    rise_->setObjectName("passRise");
    peak_->setObjectName("passPeak");
    set_->setObjectName("passSet");
    column.addLayout(grid);
}

void PassColumn::addFigures(QVBoxLayout& column) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 2, 0, 0);
    row->setSpacing(12);
    row->addLayout(detailItem(tr("Max"), tr("Highest elevation"), maxElevation_));
    row->addLayout(detailItem(tr("Dir"), tr("Direction"), direction_));
    row->addLayout(detailItem(tr("Dur"), tr("Duration"), duration_));
    row->addStretch();
    maxElevation_->setObjectName("passMaxElevation");
    direction_->setObjectName("passDirection");
    duration_->setObjectName("passDuration");
    column.addLayout(row);
}

void PassColumn::display(const PassInfo& pass) {
    shown_ = pass.id;
    dot_->setColor(Theme::color(SatelliteColorPalette::color(pass.noradId())));
    name_->setText(pass.satName());
    norad_->setText(noradText(pass.noradId()));
    rise_->setText(pass.riseTimeUTC());
    peak_->setText(pass.peakTimeUTC());
    set_->setText(pass.setTimeUTC());
    maxElevation_->setText(pass.maxElString());
    direction_->setText(pass.directionString());
    duration_->setText(pass.durationString());
}

}  // namespace veloran
