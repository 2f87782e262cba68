#include "ui/settings/form_section.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <optional>

#include "ui/q_text.h"
#include "ui/theme.h"
#include "ui/widgets/switch_button.h"
#include "ui/widgets/value_label.h"

namespace veloran {

namespace {

constexpr int kLabelWidth = 104;

/// A rounded area a little off the ground of the window.
class Card final : public QWidget {
  protected:
    void paintEvent(QPaintEvent*) override {
        constexpr double kRadius = 6;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Theme::color(Ink::separator), 1));
        // No lighter: coloured text on it keeps its contrast.
        painter.setBrush(Theme::color(Ink::primary, 0.02));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
    }
};

}  // namespace

FormSection::FormSection(std::shared_ptr<AppState> state, const QString& heading)
    : state_(std::move(state)) {
    auto* title = new QLabel(heading);
    title->setFont(Theme::face(12, QFont::DemiBold));
    title->setContentsMargins(4, 0, 0, 0);
    auto* card = new Card;
    rows_ = new QVBoxLayout(card);
    rows_->setContentsMargins(12, 10, 12, 10);
    rows_->setSpacing(8);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(title);
    column->addWidget(card);
}

void FormSection::refresh() {
    for (const auto& action : followers_) action();
}

void FormSection::addPart(QWidget* part) {
    rows_->addWidget(part);
}

QWidget* FormSection::addRow(const QString& label, QWidget* content) {
    auto* caption = new QLabel(label);
    caption->setMinimumWidth(kLabelWidth);
    const bool isTall = content->sizePolicy().hasHeightForWidth();
    auto* area = new QWidget;
    auto* row = new QHBoxLayout(area);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(caption, 0, isTall ? Qt::AlignTop : Qt::AlignVCenter);
    row->addWidget(content, 1);
    addPart(area);
    return area;
}

void FormSection::addNote(const QString& text) {
    addPart(makeNote(text));
}

void FormSection::addSwitch(const ControlName& name, Published<bool> AppState::*field) {
    auto* row = new SwitchRow(name);
    addPart(row);
    connect(row, &SwitchRow::switched, this, [this, field](bool on) { (*state_).*field = on; });
    follow([this, field, row] { row->display((*state_).*field); });
}

QLineEdit* FormSection::boundField(const ControlName& name, const QString& placeholder,
                                   Published<std::string> AppState::*field) {
    auto* line = makeField(name, placeholder, kTextWidth);
    connect(line, &QLineEdit::textEdited, this,
            [this, field](const QString& text) { (*state_).*field = text.toStdString(); });
    // A stored text that the field cannot show as it is must not be set over and over.
    follow([this, field, line, followed = std::optional<std::string>()]() mutable {
        const std::string& present = ((*state_).*field).get();
        if (followed == present) return;
        followed = present;
        if (const QString text = qText(present); line->text() != text) line->setText(text);
    });
    return line;
}

void FormSection::addSlider(const QString& label, const ControlName& name, SliderRange range,
                            Published<double> AppState::*field, std::string (*valueText)(double)) {
    constexpr int kValueWidth = 30;
    auto* slider = new FormSlider(name, range.lowest, range.highest);
    auto* value = new ValueLabel({11});
    value->setWidthRange(kValueWidth, kValueWidth);
    value->setAlignment(Qt::AlignRight);
    value->setObjectName(name.object + "Value");
    addRow(label, inRow({slider, value}, 8));
    connect(slider, &QSlider::valueChanged, this, [this, field, value, valueText](int chosen) {
        (*state_).*field = static_cast<double>(chosen);
        value->setText(valueText(chosen));
    });
    follow([this, field, slider, value, valueText, range] {
        const double present = (*state_).*field;
        value->setText(valueText(present));
        const int shown =
            static_cast<int>(std::lround(std::clamp<double>(present, range.lowest, range.highest)));
        if (slider->value() == shown) return;
        const QSignalBlocker silent(slider);
        slider->setValue(shown);
    });
}

}  // namespace veloran
