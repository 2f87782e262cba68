#pragma once

#include <QComboBox>

#include "ui/widgets/fitted_text.h"

namespace veloran {

/// A drop-down whose long labels stay readable: the closed box draws them smaller, then cuts them
/// in the middle, with a tooltip that tells all; the open list is as wide as they are. A turn of
/// the wheel over the closed box chooses nothing: a choice may retune the radio.
class ChoiceBox : public QComboBox {
    Q_OBJECT
  public:
    static constexpr int kSmallestPixels = 11;

    explicit ChoiceBox(QWidget* parent = nullptr);
    void showPopup() override;

  protected:
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

  private:
    FittedText fitted() const;
};

}  // namespace veloran
