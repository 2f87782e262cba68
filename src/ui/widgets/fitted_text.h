#pragma once

#include <QFont>
#include <QString>

class QHelpEvent;
class QWidget;

namespace veloran {

/// A text made to fit a width: drawn smaller first, then cut with "…".
struct FittedText {
    QFont font;
    QString text;
};

/// `font` is measured in pixels, and shrinks to `smallestPixels` at least.
FittedText fittedText(const QFont& font, const QString& text, int width, int smallestPixels,
                      Qt::TextElideMode cutAt);

/// Shows all of a text that its widget cuts. It may come from outside, so markup is not obeyed.
void showFullText(const QHelpEvent& event, QWidget* widget, const QString& text);

}  // namespace veloran
