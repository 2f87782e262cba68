#pragma once

#include <QPointer>
#include <QTimer>
#include <QWindow>

class QWidget;

namespace veloran {

/// Whole milliseconds between two frames of a display, so short that none is missed. Rates are
/// bounded to 30 to 120 a second; 60 where the display tells none.
int frameMilliseconds(double refreshRate);

/// Fires once for every frame of the display that a widget is on, while the widget can be seen: not
/// while it is hidden, its window minimised, or the window covered where the platform tells.
class FrameTimer : public QObject {
    Q_OBJECT
  public:
    explicit FrameTimer(QWidget* widget);

    bool isRunning() const { return timer_.isActive(); }
    int interval() const { return timer_.interval(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

  signals:
    void frame();

  private:
    void followWindow();
    void startOrStop();
    bool canBeSeen() const;

    QWidget* widget_;
    QPointer<QWidget> topLevel_;
    QPointer<QWindow> window_;
    QTimer timer_;
};

}  // namespace veloran
