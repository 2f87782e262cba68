#pragma once

#include <QPointer>
#include <QWindow>
#include <memory>

#include "platform/main_loop.h"

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
    FrameTimer(MainLoop& loop, QWidget* widget);

    bool isRunning() const { return timer_ != nullptr; }
    /// Milliseconds.
    int interval() const { return interval_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

  signals:
    void frame();

  private:
    void followWindow();
    void startOrStop();
    bool canBeSeen() const;

    MainLoop& loop_;
    QWidget* widget_;
    QPointer<QWidget> topLevel_;
    QPointer<QWindow> window_;
    std::unique_ptr<Timer> timer_;
    int interval_ = 0;
};

}  // namespace veloran
