#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>
#include <functional>

namespace veloran::test {

/// Runs the event loop until `condition` holds. False when it does not within a time that only a
/// failure takes.
inline bool spinUntil(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(120'000);
    QTimer wakeUp;  // for conditions that come true without an event
    wakeUp.start(5);
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

/// Runs the event loop for a while, in which something must not happen.
inline void spinFor(int milliseconds) {
    const QDeadlineTimer end(milliseconds);
    spinUntil([&] { return end.hasExpired(); });
}

}  // namespace veloran::test
