#pragma once

#include <QColor>
#include <QWidget>

#include "ui/ink.h"

namespace veloran {

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

}  // namespace veloran
