#include "ui/widgets/fitted_text.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QToolTip>
#include <algorithm>

namespace veloran {

QString readable(const QString& text) {
    constexpr qsizetype kMostRead = 2000;
    return text.size() <= kMostRead ? text : text.left(kMostRead) + QChar(0x2026);
}

FittedText fittedText(const QFont& font, const QString& whole, int width, int smallestPixels,
                      Qt::TextElideMode cutAt) {
    const QString text = readable(whole);
    const int needed = QFontMetrics(font).horizontalAdvance(text);
    if (needed <= width) return {font, text};
    QFont drawn = font;
    const int pixels = font.pixelSize();
    drawn.setPixelSize(std::max(std::min(pixels, smallestPixels), pixels * width / needed));
    return {drawn, QFontMetrics(drawn).elidedText(text, cutAt, width)};
}

bool isCut(const QFont& font, const QString& text, int width) {
    return QFontMetrics(font).horizontalAdvance(readable(text)) > width;
}

QString plainToolTip(const QString& text) {
    return plainToolTip(QStringList(text));
}

QString plainToolTip(const QStringList& lines) {
    QStringList plain;
    for (const QString& line : lines) plain.append(readable(line).toHtmlEscaped());
    const QString text = plain.join("<br>");
    return text.isEmpty() ? QString() : "<p>" + text + "</p>";
}

void showFullText(const QHelpEvent& event, QWidget* widget, const QString& text) {
    QToolTip::showText(event.globalPos(), plainToolTip(text), widget);
}

}  // namespace veloran
