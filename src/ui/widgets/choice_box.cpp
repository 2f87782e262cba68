#include "ui/widgets/choice_box.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStylePainter>
#include <QWheelEvent>
#include <algorithm>

namespace veloran {

ChoiceBox::ChoiceBox(QWidget* parent) : QComboBox(parent) {
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(10);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ChoiceBox::showPopup() {
    constexpr int kItemMargins = 32;
    view()->setMinimumWidth(std::max(width(), view()->sizeHintForColumn(0) + kItemMargins));
    QComboBox::showPopup();
}

void ChoiceBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

bool ChoiceBox::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || fitted().text == currentText()) {
        return QComboBox::event(event);
    }
    showFullText(*static_cast<QHelpEvent*>(event), this, currentText());
    return true;
}

void ChoiceBox::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);

    const FittedText drawn = fitted();
    painter.setFont(drawn.font);
    option.currentText = drawn.text;
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

FittedText ChoiceBox::fitted() const {
    constexpr int kLabelMargins = 6;
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    return fittedText(font(), currentText(), field.width() - kLabelMargins, kSmallestPixels,
                      Qt::ElideMiddle);
}

}  // namespace veloran
