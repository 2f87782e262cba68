#pragma once

#include <QColor>
#include <QFont>
#include <QRect>
#include <QString>

#include "ui/paint.h"

class QHelpEvent;
class QPainter;
class QWidget;

namespace veloran {

// What delegates paint their rows with.

/// The square of `size` at the left end of an area, on its middle line.
QRect middleSquare(const QRect& area, int size);

/// A text on the middle line of an area: drawn smaller, down to `smallestPixels`, then cut.
struct RowText {
    QString text;
    QFont font;
    Tint tint;
    Qt::Alignment side = Qt::AlignLeft;
    int smallestPixels = 9;
};
void drawRowText(QPainter& painter, const QRect& area, const RowText& text,
                 const QColor& background);

/// The mark of the current row.
void drawRowFocus(QPainter& painter, const QRect& row);

/// Shows or, where it is empty, hides the tooltip of what the pointer rests on. It may come from
/// outside, so markup is not obeyed.
void showRowHelp(const QHelpEvent& event, QWidget* view, const QString& help);

/// Draws pieces of text on one line, from either end.
class TextLine {
  public:
    TextLine(QPainter& painter, QRect area, const QColor& background)
        : painter_(painter), area_(area), background_(background) {}

    /// Cut where there is no room.
    void left(const QString& text, const QFont& font, const Tint& tint, int gap);
    void right(const QString& text, const QFont& font, const Tint& tint, int gap);
    void skip(int width) { area_.setLeft(area_.left() + width); }

  private:
    void draw(int x, const QString& text, const QFont& font, const Tint& tint);

    QPainter& painter_;
    QRect area_;
    QColor background_;
};

}  // namespace veloran
