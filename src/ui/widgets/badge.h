#pragma once

#include <QFont>
#include <QWidget>

#include "ui/ink.h"

namespace veloran {

/// The measures of a badge, in points.
struct BadgeStyle {
    int pixels;
    int horizontalPadding;
    double cornerRadius;
    double outlineOpacity;
    QFont::Weight weight = QFont::Bold;
};

/// A short word in an outline of its own colour; one point of vertical padding, outline of half a
/// point.
class Badge : public QWidget {
    Q_OBJECT
  public:
    /// `meaning` says to a screen reader what the word is about.
    explicit Badge(const BadgeStyle& style, const QString& meaning = {}, QWidget* parent = nullptr);
    void display(const QString& text, Ink ink);
    const QString& text() const { return text_; }
    Ink ink() const { return ink_; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QFont font() const;

    BadgeStyle style_;
    QString meaning_;
    QString text_;
    Ink ink_ = Ink::secondary;
};

}  // namespace veloran
