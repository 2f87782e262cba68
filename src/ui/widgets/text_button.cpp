#include "ui/widgets/text_button.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include "ui/theme.h"

namespace veloran {

TextButton::TextButton(const QString& text, const TextStyle& style, QWidget* parent)
    : QAbstractButton(parent), style_(style) {
    setText(text);
    setFont(fontOf(style));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
}

QSize TextButton::sizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + 2, metrics.height() + 2};
}

void TextButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QFont drawn = font();
    drawn.setUnderline(underMouse() || isDown());
    painter.setFont(drawn);
    painter.setPen(Theme::text(style_.ink, isDown() ? 1 : style_.opacity));
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (!hasFocus()) return;
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
}

}  // namespace veloran
