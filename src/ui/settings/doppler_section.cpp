#include "ui/settings/doppler_section.h"

#include <QHBoxLayout>
#include <QLabel>

#include "ui/q_text.h"
#include "ui/settings/field_mark.h"
#include "ui/settings/typed_values.h"
#include "ui/widgets/value_label.h"

namespace veloran {

DopplerSection::DopplerSection(std::shared_ptr<AppState> state)
    : FormSection(std::move(state), tr("Doppler Output")),
      rate_(makeField({"dopplerRate", tr("Update rate")}, "10", 80)) {
    auto* limits = makeNote("(1–50)");
    limits->setWordWrap(false);
    auto* rateNote = markUnread(
        *rate_, [](std::string_view text) { return typedNumber(text).has_value(); },
        tr("A number, such as 10"));
    addRow(tr("Update Rate"), inRow({rate_, new QLabel("Hz"), limits, rateNote}, 4));
    addRow(tr("Presets"), makePresets());
}

QWidget* DopplerSection::makePresets() {
    auto* area = new QWidget;
    auto* row = new QHBoxLayout(area);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    for (const int hertz : {1, 5, 10, 20, 50}) {
        const QString number = QString::number(hertz);
        auto* button =
            makeButton({"rate" + number, tr("Update rate %1 Hz").arg(number)}, number, 11);
        connect(button, &QPushButton::clicked, this, [this, number] { rate_->setText(number); });
        row->addWidget(button);
    }
    row->addStretch();
    return area;
}

void DopplerSection::fill(const SettingsTexts& texts) {
    rate_->setText(qText(texts.updateRate));
}

void DopplerSection::collect(SettingsTexts& texts) const {
    texts.updateRate = rate_->text().toStdString();
}

}  // namespace veloran
