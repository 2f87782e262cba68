#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

class QHelpEvent;
class QWidget;

namespace veloran {

/// A text made to fit a width: drawn smaller first, then cut with "…".
struct FittedText {
    QFont font;
    QString text;
};

/// As much of a text as anyone reads. To lay out one of megabytes, which a file may hold where a
/// name belongs, would hold up the window.
QString readable(const QString& text);

/// `font` is measured in pixels, and shrinks to `smallestPixels` at least.
FittedText fittedText(const QFont& font, const QString& text, int width, int smallestPixels,
                      Qt::TextElideMode cutAt);

/// Whether a width is too small for a text.
bool isCut(const QFont& font, const QString& text, int width);

/// A tooltip of one text. It may come from outside, so markup is not obeyed.
QString plainToolTip(const QString& text);
QString plainToolTip(const QStringList& lines);

/// Shows all of a text that its widget cuts.
void showFullText(const QHelpEvent& event, QWidget* widget, const QString& text);

}  // namespace veloran
