#pragma once

#include <QWidget>

#include "ui/loop_timer.h"

namespace veloran {

/// Turns while something is loading.
class Spinner : public QWidget {
    Q_OBJECT
  public:
    Spinner(MainLoop& loop, int diameter, QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void turn();

    LoopTimer timer_;
    int step_ = 0;
};

}  // namespace veloran
