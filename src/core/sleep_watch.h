#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/clock.h"
#include "platform/main_loop.h"

namespace veloran {

/// Whether the clock tells of more than the wait between two looks at it: the machine has slept or
/// stood still, or its clock was set.
bool clockLeapt(Instant before, Instant after, double waitedSeconds);

/// Tells when the machine has woken up. Timers wait by a clock that stands still in a sleep, so a
/// beat that finds the wall clock elsewhere knows; where the desktop tells of it too, that comes
/// sooner. One sleep is told once. Main thread only.
class SleepWatch {
  public:
    static constexpr double kBeatSeconds = 2;

    SleepWatch(const Clock& clock, MainLoop& loop, std::function<void()> onWake);

    /// The desktop says that the machine has woken up.
    void wokeUp();

  private:
    void beat();
    void tell(Instant now);

    const Clock& clock_;
    std::function<void()> onWake_;
    Instant lastLook_;
    std::optional<Instant> lastTold_;
    std::unique_ptr<Timer> timer_;
};

}  // namespace veloran
