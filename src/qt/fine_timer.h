#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <memory>

#include "qt/timer_descriptor.h"

namespace veloran {

/// A single shot at a moment of the steady clock, to a fraction of a millisecond: a QTimer counts
/// whole ones. It falls back to a QTimer where no timer descriptor can be had.
class FineTimer final : public QObject {
    Q_OBJECT
  public:
    using Clock = TimerDescriptor::Clock;

    explicit FineTimer(QObject* parent = nullptr);

    /// Replaces an earlier moment; one that has passed is now.
    void startUntil(Clock::time_point due);
    void stop();

  signals:
    void timeout();  ///< never before its moment

  private:
    void startTimer();

    TimerDescriptor descriptor_;
    std::unique_ptr<QSocketNotifier> notifier_;  // goes before its descriptor
    QTimer timer_;
    Clock::time_point due_;
};

}  // namespace veloran
