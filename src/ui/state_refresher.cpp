#include "ui/state_refresher.h"

#include <utility>

namespace veloran {

StateRefresher::StateRefresher(ChangeNotifier& objectWillChange, MainLoop& loop, QObject* parent)
    : QObject(parent),
      frame_(loop, kFrameSeconds, LoopTimer::Kind::single),
      subscription_(objectWillChange.subscribe([this] { markChanged(); })) {
    connect(&frame_, &LoopTimer::timeout, this, [this] {
        if (isChanged_) run();
    });
}

void StateRefresher::markChanged() {
    if (std::exchange(isChanged_, true) || frame_.isActive()) return;
    QMetaObject::invokeMethod(this, &StateRefresher::run, Qt::QueuedConnection);
}

void StateRefresher::run() {
    isChanged_ = false;
    frame_.start();
    emit refresh();
}

}  // namespace veloran
