#pragma once

#include <QAbstractButton>

#include "ui/widgets/text_style.h"

namespace veloran {

/// A button without a border: a text in colour, underlined while the pointer is on it.
class TextButton : public QAbstractButton {
    Q_OBJECT
  public:
    TextButton(const QString& text, const TextStyle& style, QWidget* parent = nullptr);
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    TextStyle style_;
};

}  // namespace veloran
