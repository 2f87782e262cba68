#include "ui/second_timer.h"

#include <cmath>

namespace veloran {

namespace {

/// Behind the moment of the call, so that a millisecond's rounding does not bring the beat before
/// the tick.
constexpr int kBehind = 2;
constexpr double kLatest = 4;
/// Whoever calls at no tick's time may not keep the beat from coming.
constexpr qint64 kLeastBetweenMoves = 10'000;

}  // namespace

SecondTimer::SecondTimer(QObject* parent) : QTimer(parent) {
    setTimerType(Qt::PreciseTimer);
    setInterval(1000);
}

bool SecondTimer::moveBehindTick(double tickMilliseconds) {
    if (!isActive() || !(tickMilliseconds > 2 * kLatest)) return false;
    if (std::fmod(remainingTime(), tickMilliseconds) <= kLatest) return false;
    if (sinceMove_.isValid() && sinceMove_.elapsed() < kLeastBetweenMoves) return false;
    sinceMove_.start();
    QTimer::singleShot(kBehind, Qt::PreciseTimer, this, [this] {
        if (isActive()) start();
    });
    return true;
}

}  // namespace veloran
