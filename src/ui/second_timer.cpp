#include "ui/second_timer.h"

#include <cmath>

namespace veloran {

namespace {

/// Seconds behind the moment of the call, so that rounding does not bring the beat before the tick.
constexpr double kBehind = 0.002;
constexpr double kLatest = 0.004;
/// Whoever calls at no tick's time may not keep the beat from coming.
constexpr double kLeastBetweenMoves = 10;

}  // namespace

SecondTimer::SecondTimer(MainLoop& loop, const Clock& clock, QObject* parent)
    : LoopTimer(loop, 1, Kind::repeating, parent),
      clock_(clock),
      moved_(loop, kBehind, Kind::single) {
    connect(this, &LoopTimer::timeout, this, [this] { lastBeat_ = clock_.now(); });
    connect(&moved_, &LoopTimer::timeout, this, &SecondTimer::start);
}

void SecondTimer::start() {
    LoopTimer::start();
    lastBeat_ = clock_.now();
}

void SecondTimer::stop() {
    LoopTimer::stop();
    moved_.stop();
}

bool SecondTimer::moveBehindTick(double tickSeconds) {
    if (!isActive() || !(tickSeconds > 2 * kLatest)) return false;
    const Instant now = clock_.now();
    const double behind = std::fmod(lastBeat_ + seconds() - now, tickSeconds);
    if (behind >= 0 && behind <= kLatest) return false;
    // A clock that was set back does not hold up the next move.
    if (lastMove_ && now >= *lastMove_ && now - *lastMove_ < kLeastBetweenMoves) return false;
    lastMove_ = now;
    moved_.start();
    return true;
}

}  // namespace veloran
