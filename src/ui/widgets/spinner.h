#pragma once

#include <QWidget>

namespace veloran {

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
