#include "ui/detail/transponder_picker.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/symbol_icon.h"
#include "ui/theme.h"
#include "ui/widgets/choice_box.h"
#include "ui/widgets/symbol_view.h"
#include "ui/widgets/value_label.h"

namespace veloran {

TransponderPicker::TransponderPicker(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent), state_(std::move(state)) {
    choices_ = new ChoiceBox;
    choices_->setObjectName("transponderPicker");
    choices_->setAccessibleName(tr("Transponder"));
    choices_->setFont(Theme::mono(15));
    connect(choices_, &ChoiceBox::activated, this, &TransponderPicker::choose);

    row_ = new QWidget;
    auto* row = new QHBoxLayout(row_);
    row->setContentsMargins(0, 2, 0, 0);
    row->setSpacing(4);
    row->addWidget(new ValueLabel({15, QFont::Medium, Ink::secondary}, "TX"));
    row->addWidget(choices_, 1);

    inverting_ = new QWidget;
    inverting_->setObjectName("invertingNote");
    auto* note = new QHBoxLayout(inverting_);
    note->setContentsMargins(0, 0, 0, 0);
    note->setSpacing(4);
    note->addWidget(new SymbolView(Symbol::arrowUpAndDown, 12, Ink::purple));
    note->addWidget(new ValueLabel({14, QFont::Normal, Ink::purple}, tr("INVERTING transponder")));
    note->addStretch();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(row_);
    column->addWidget(inverting_);
}

void TransponderPicker::refresh(const SatellitePtr& satellite) {
    const auto& channel = state_->selectedTransmitter.get();
    const Selected selected{channel ? std::optional(channel->centerFreqHz()) : std::nullopt,
                            channel && channel->inverting};
    const bool offersAnew = satellite != satellite_ || satellite->transmitters != offered_;
    if (!offersAnew && selected == shown_) return;
    if (offersAnew) offer(satellite);
    shown_ = selected;
    const std::string id = shownSelectionId(selections_, selected.centerHz);
    choices_->setCurrentIndex(choices_->findData(QString::fromStdString(id)));
    row_->setVisible(!selections_.empty());
    inverting_->setVisible(!selections_.empty() && selected.inverting);
}

void TransponderPicker::offer(const SatellitePtr& satellite) {
    satellite_ = satellite;
    offered_ = satellite->transmitters;
    selections_ = buildTransmitterSelections(offered_);
    choices_->clear();
    for (const TransmitterSelection& selection : selections_) {
        choices_->addItem(QString::fromStdString(selection.label()),
                          QString::fromStdString(selection.id()));
    }
}

void TransponderPicker::choose(int index) {
    shown_.reset();  // of choices with one downlink the first shows, whichever was picked
    const std::string id = choices_->itemData(index).toString().toStdString();
    const auto chosen = std::ranges::find_if(
        selections_, [&](const TransmitterSelection& s) { return s.id() == id; });
    if (chosen != selections_.end()) state_->selectTransmitter(chosen->downlink(), satellite_);
}

}  // namespace veloran
