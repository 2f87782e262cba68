#pragma once

#include <QObject>
#include <memory>

#include "platform/main_loop.h"

namespace veloran {

/// A timer of the program's main loop for a view: stopped at first, and with its owner.
class LoopTimer : public QObject {
    Q_OBJECT
  public:
    enum class Kind { repeating, single };

    LoopTimer(MainLoop& loop, double seconds, Kind kind = Kind::repeating,
              QObject* parent = nullptr);

    /// Fires one interval from now, also when it has been running.
    void start();
    void stop() { timer_.reset(); }
    bool isActive() const { return timer_ != nullptr; }
    double seconds() const { return seconds_; }

  signals:
    void timeout();

  private:
    void fire();

    MainLoop& loop_;
    double seconds_;
    Kind kind_;
    std::unique_ptr<Timer> timer_;
};

}  // namespace veloran
