#pragma once

#include <ctime>
#include <fstream>

namespace veloran::test {

/// Seconds that this thread has had a processor. Unlike time on the wall, they do not grow while
/// other programs have it.
inline double threadProcessorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// Seconds that this thread could have run and other programs had the processors.
inline double threadQueuedSeconds() {
    std::ifstream times("/proc/thread-self/schedstat");  // nanoseconds that it ran, and was queued
    double ran = 0;
    double queued = 0;
    times >> ran >> queued;
    return queued * 1e-9;
}

}  // namespace veloran::test
