#pragma once

#include <ctime>

namespace veloran::test {

/// Seconds that this thread has had a processor. Unlike time on the wall, they do not grow while
/// other programs have it.
inline double threadProcessorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

}  // namespace veloran::test
