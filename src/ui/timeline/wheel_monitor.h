#pragma once

#include <QObject>

class QWheelEvent;
class QWidget;

namespace veloran {

/// Sees the wheel turn over an area while it is on, and takes nothing from the views that the
/// turning is meant for: every event goes its own way afterwards.
class WheelMonitor : public QObject {
    Q_OBJECT
  public:
    explicit WheelMonitor(QWidget& area);

    void start();
    void stop();

    /// How far an event scrolls: points of a touchpad, or three for a notch of a wheel.
    static double scrollingDeltaY(const QWheelEvent& event);

  signals:
    void scrolled(double deltaY);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget& area_;
};

}  // namespace veloran
