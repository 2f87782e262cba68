#include "demo/watched_loop.h"

#include <utility>

namespace veloran {

std::unique_ptr<Timer> WatchedLoop::every(double seconds, Task task) {
    if (seconds != watched_) return loop_.every(seconds, std::move(task));
    using SteadyClock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const auto start = SteadyClock::now();
    const Milliseconds interval(seconds * 1000);
    return loop_.every(seconds, [start, interval, notes = lateness_, task = std::move(task)] {
        const Milliseconds passed = SteadyClock::now() - start;
        const auto wholeIntervals = static_cast<double>(static_cast<long long>(passed / interval));
        notes->push_back((passed - wholeIntervals * interval).count());
        task();
    });
}

}  // namespace veloran
