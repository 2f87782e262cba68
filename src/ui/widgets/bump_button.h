#pragma once

#include <QPushButton>

namespace veloran {

/// A small bordered button of at least 28 points with a mono text.
class BumpButton : public QPushButton {
    Q_OBJECT
  public:
    static constexpr int kLeastWidth = 28;
    static constexpr int kHeight = 20;

    explicit BumpButton(const QString& text, QWidget* parent = nullptr);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
};

}  // namespace veloran
