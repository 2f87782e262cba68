#include "demo/watched_loop.h"

#include <cmath>
#include <utility>

namespace veloran {

std::unique_ptr<Timer> WatchedLoop::every(double seconds, Task task) {
    if (seconds != watched_) return loop_.every(seconds, std::move(task));
    using SteadyClock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const auto start = SteadyClock::now();
    const Milliseconds interval(seconds * 1000);
    return loop_.every(seconds, [start, interval, due = interval, notes = lateness_,
                                 task = std::move(task)]() mutable {
        const Milliseconds passed = SteadyClock::now() - start;
        notes->push_back((passed - due).count());
        due = (std::floor(passed / interval) + 1) * interval;
        task();
    });
}

}  // namespace veloran
