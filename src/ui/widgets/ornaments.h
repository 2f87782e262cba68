#pragma once

#include <QWidget>

#include "ui/ink.h"

namespace veloran {

/// A line of one point between two parts.
class Divider : public QWidget {
    Q_OBJECT
  public:
    explicit Divider(Qt::Orientation orientation, QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A filled circle.
class ColorDot : public QWidget {
    Q_OBJECT
  public:
    explicit ColorDot(int diameter, QWidget* parent = nullptr);
    void setInk(Ink ink);
    void setColor(const QColor& color);
    QColor color() const;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Ink ink_ = Ink::secondary;
    QColor color_;  // wins over the ink when valid
};

/// The measures of a badge, in points.
struct BadgeStyle {
    int pixels;
    int horizontalPadding;
    double cornerRadius;
    double outlineOpacity;
};

/// A short word in an outline of its own colour; one point of vertical padding, outline of half a
/// point.
class Badge : public QWidget {
    Q_OBJECT
  public:
    Badge(const BadgeStyle& style, QWidget* parent = nullptr);
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
    QString text_;
    Ink ink_ = Ink::secondary;
};

/// Turns while something is loading.
class Spinner : public QWidget {
    Q_OBJECT
  public:
    explicit Spinner(int diameter, QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    int timer_ = 0;
    int step_ = 0;
};

}  // namespace veloran
