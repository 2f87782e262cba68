#pragma once

#include <QPushButton>

#include "ui/ink.h"

namespace veloran {

/// A push button in one flat colour, so that its text stays as legible as the colour allows; a
/// plain button while it is disabled.
class ProminentButton : public QPushButton {
    Q_OBJECT
  public:
    ProminentButton(const QString& text, Ink ink, QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Ink ink_;
};

}  // namespace veloran
