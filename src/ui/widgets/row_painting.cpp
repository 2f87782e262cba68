#include "ui/widgets/row_painting.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "ui/theme.h"
#include "ui/widgets/fitted_text.h"

namespace veloran {

QRect middleSquare(const QRect& area, int size) {
    return {area.left(), area.center().y() - size / 2, size, size};
}

void drawRowText(QPainter& painter, const QRect& area, const RowText& text,
                 const QColor& background) {
    if (text.text.isEmpty() || area.width() <= 0) return;
    const FittedText fitted =
        fittedText(text.font, text.text, area.width(), text.smallestPixels, Qt::ElideRight);
    painter.setFont(fitted.font);
    painter.setPen(Theme::text(text.tint, background));
    painter.drawText(area, static_cast<int>(text.side | Qt::AlignVCenter) | Qt::TextSingleLine,
                     fitted.text);
}

void drawRowFocus(QPainter& painter, const QRect& row) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Theme::color(Ink::blue), 1.5));
    painter.drawRoundedRect(QRectF(row).adjusted(1, 1, -1, -1), 3, 3);
}

void showRowHelp(const QHelpEvent& event, QWidget* view, const QString& help) {
    if (help.isEmpty()) {
        QToolTip::hideText();
    } else {
        showFullText(event, view, help);
    }
}

void TextLine::left(const QString& whole, const QFont& font, const Tint& tint, int gap) {
    const QString text = readable(whole);
    const QFontMetrics metrics(font);
    draw(area_.left(), metrics.elidedText(text, Qt::ElideRight, area_.width()), font, tint);
    area_.setLeft(area_.left() + metrics.horizontalAdvance(text) + gap);
}

void TextLine::right(const QString& text, const QFont& font, const Tint& tint, int gap) {
    const int width = QFontMetrics(font).horizontalAdvance(text);
    draw(area_.right() + 1 - width, text, font, tint);
    area_.setRight(area_.right() - width - gap);
}

void TextLine::draw(int x, const QString& text, const QFont& font, const Tint& tint) {
    const QFontMetrics metrics(font);
    const int baseline = area_.top() + (area_.height() - metrics.height()) / 2 + metrics.ascent();
    painter_.setFont(font);
    painter_.setPen(Theme::text(tint, background_));
    painter_.drawText(x, baseline, text);
}

}  // namespace veloran
