#include "ui/state_refresher.h"

#include <algorithm>

namespace veloran {

StateRefresher::StateRefresher(ChangeNotifier& objectWillChange, QObject* parent)
    : QObject(parent), subscription_(objectWillChange.subscribe([this] { markChanged(); })) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &StateRefresher::run);
}

void StateRefresher::markChanged() {
    if (timer_.isActive()) return;
    const qint64 elapsed = sinceLast_.isValid() ? sinceLast_.elapsed() : kFrameMilliseconds;
    timer_.start(
        static_cast<int>(std::clamp<qint64>(kFrameMilliseconds - elapsed, 0, kFrameMilliseconds)));
}

void StateRefresher::run() {
    sinceLast_.start();
    emit refresh();
}

}  // namespace veloran
