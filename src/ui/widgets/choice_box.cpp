#include "ui/widgets/choice_box.h"

#include <QAbstractItemView>
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

void ChoiceBox::paintEvent(QPaintEvent*) {
    constexpr int kLabelMargins = 6;
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);

    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    const int room = field.width() - kLabelMargins;
    const int needed = option.fontMetrics.horizontalAdvance(option.currentText);
    QFont drawn = font();
    if (needed > room) {
        const int fitting = drawn.pixelSize() * room / needed;
        drawn.setPixelSize(std::clamp(fitting, kSmallestPixels, drawn.pixelSize()));
    }
    painter.setFont(drawn);
    option.currentText = QFontMetrics(drawn).elidedText(option.currentText, Qt::ElideMiddle, room);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

}  // namespace veloran
