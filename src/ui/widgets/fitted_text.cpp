#include "ui/widgets/fitted_text.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QToolTip>
#include <algorithm>

namespace veloran {

FittedText fittedText(const QFont& font, const QString& text, int width, int smallestPixels,
                      Qt::TextElideMode cutAt) {
    const int needed = QFontMetrics(font).horizontalAdvance(text);
    if (needed <= width) return {font, text};
    QFont drawn = font;
    const int pixels = font.pixelSize();
    drawn.setPixelSize(std::max(std::min(pixels, smallestPixels), pixels * width / needed));
    return {drawn, QFontMetrics(drawn).elidedText(text, cutAt, width)};
}

void showFullText(const QHelpEvent& event, QWidget* widget, const QString& text) {
    QToolTip::showText(event.globalPos(), "<p>" + text.toHtmlEscaped() + "</p>", widget);
}

}  // namespace veloran
