#include "ui/widgets/badge.h"

#include <QFontMetrics>
#include <QPainter>

#include "ui/theme.h"

namespace veloran {

Badge::Badge(const BadgeStyle& style, const QString& meaning, QWidget* parent)
    : QWidget(parent), style_(style), meaning_(meaning) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Badge::display(const QString& text, Ink ink) {
    if (text == text_ && ink == ink_) return;
    if (text != text_) updateGeometry();
    text_ = text;
    ink_ = ink;
    setAccessibleName(meaning_.isEmpty() ? text : meaning_ + ' ' + text);
    update();
}

QSize Badge::sizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text_) + 2 * style_.horizontalPadding, metrics.height() + 2};
}

void Badge::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Theme::color(ink_, style_.outlineOpacity), 0.5));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), style_.cornerRadius,
                            style_.cornerRadius);
    painter.setFont(font());
    painter.setPen(Theme::text(ink_));
    painter.drawText(rect(), Qt::AlignCenter, text_);
}

QFont Badge::font() const {
    return Theme::mono(style_.pixels, style_.weight);
}

}  // namespace veloran
