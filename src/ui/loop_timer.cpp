#include "ui/loop_timer.h"

namespace veloran {

LoopTimer::LoopTimer(MainLoop& loop, double seconds, Kind kind, QObject* parent)
    : QObject(parent), loop_(loop), seconds_(seconds), kind_(kind) {}

void LoopTimer::start() {
    timer_ = loop_.every(seconds_, [this] { fire(); });
}

void LoopTimer::fire() {
    if (kind_ == Kind::single) stop();
    emit timeout();
}

}  // namespace veloran
