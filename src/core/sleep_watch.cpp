#include "core/sleep_watch.h"

#include <cmath>
#include <utility>

namespace veloran {

namespace {

constexpr double kLeapSeconds = 10;      // less than that no pass list minds
constexpr double kSameWakeSeconds = 10;  // between the clock's word and the desktop's

}  // namespace

bool clockLeapt(Instant before, Instant after, double waitedSeconds) {
    return std::abs(after - before - waitedSeconds) > kLeapSeconds;
}

SleepWatch::SleepWatch(const Clock& clock, MainLoop& loop, std::function<void()> onWake)
    : clock_(clock),
      onWake_(std::move(onWake)),
      lastLook_(clock.now()),
      timer_(loop.every(kBeatSeconds, [this] { beat(); })) {}

void SleepWatch::wokeUp() {
    tell(clock_.now());
}

void SleepWatch::beat() {
    const Instant now = clock_.now();
    if (clockLeapt(lastLook_, now, kBeatSeconds)) return tell(now);
    lastLook_ = now;
}

void SleepWatch::tell(Instant now) {
    // A clock that went back tells nothing of how long ago the last wake was.
    const bool isTold = lastTold_ && now >= *lastTold_ && now - *lastTold_ < kSameWakeSeconds;
    lastLook_ = now;
    lastTold_ = now;
    if (!isTold) onWake_();
}

}  // namespace veloran
