#include "qt/fine_timer.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace veloran {

FineTimer::FineTimer(QObject* parent) : QObject(parent) {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] {
        if (Clock::now() < due_) return startTimer();
        emit timeout();
    });
    if (!descriptor_.isOpen()) return;
    notifier_ = std::make_unique<QSocketNotifier>(descriptor_.number(), QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
        // A loop within the action may have taken it, or the moment was put off meanwhile.
        if (descriptor_.takeExpiry()) emit timeout();
    });
}

void FineTimer::startUntil(Clock::time_point due) {
    due_ = due;
    if (notifier_) return descriptor_.arm(due);
    startTimer();
}

void FineTimer::stop() {
    if (notifier_) return descriptor_.disarm();
    timer_.stop();
}

/// To time out not before the moment, or as late as a QTimer can if that is earlier.
void FineTimer::startTimer() {
    using std::chrono::milliseconds;
    const auto wait = std::chrono::ceil<milliseconds>(due_ - Clock::now()).count();
    const std::int64_t longest = std::numeric_limits<int>::max();
    timer_.start(static_cast<int>(std::clamp<std::int64_t>(wait, 0, longest)));
}

}  // namespace veloran
