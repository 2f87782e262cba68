#include "ui/widgets/prominent_button.h"

#include <QStyleOptionFocusRect>
#include <QStylePainter>

#include "ui/theme.h"

namespace veloran {

ProminentButton::ProminentButton(const QString& text, Ink ink, QWidget* parent)
    : QPushButton(text, parent), ink_(ink) {}

void ProminentButton::paintEvent(QPaintEvent* event) {
    if (!isEnabled()) {
        QPushButton::paintEvent(event);
        return;
    }
    // Towards the text of the theme, so that the contrast of the label only grows.
    const QColor pressed = blended(Theme::color(Ink::primary, 0.2), Theme::color(ink_));
    QStylePainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isDown() ? pressed : Theme::color(ink_));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 3, 3);

    QStyleOptionButton option;
    initStyleOption(&option);
    option.palette.setColor(QPalette::ButtonText, Theme::color(Ink::control));
    painter.drawControl(QStyle::CE_PushButtonLabel, option);
    if (!hasFocus()) return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Theme::color(Ink::control), 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(3.5, 3.5, -3.5, -3.5), 2, 2);
}

}  // namespace veloran
