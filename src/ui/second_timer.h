#pragma once

#include <optional>

#include "platform/clock.h"
#include "ui/loop_timer.h"

namespace veloran {

/// Beats once a second, for what a view tells of the time. While a radio is steered the beat goes
/// behind a tick: what it draws is done before the next one falls due.
class SecondTimer : public LoopTimer {
    Q_OBJECT
  public:
    SecondTimer(MainLoop& loop, const Clock& clock, QObject* parent = nullptr);

    void start();
    void stop();
    /// Called right after a tick of every `tickSeconds`. Puts the beat off once, by less than a
    /// second, unless it falls behind a tick already; whether it did.
    bool moveBehindTick(double tickSeconds);

  private:
    const Clock& clock_;
    LoopTimer moved_;
    Instant lastBeat_;
    std::optional<Instant> lastMove_;
};

}  // namespace veloran
