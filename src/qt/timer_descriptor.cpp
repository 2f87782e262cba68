#include "qt/timer_descriptor.h"

#ifdef __linux__
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>

#endif

namespace veloran {

#ifdef __linux__

namespace {

/// The steady clock is CLOCK_MONOTONIC. All zeroes disarm.
void set(int number, TimerDescriptor::Clock::duration sinceBoot) {
    using std::chrono::seconds;
    const auto whole = std::chrono::floor<seconds>(sinceBoot);
    itimerspec setting{};
    setting.it_value.tv_sec = static_cast<time_t>(whole.count());
    setting.it_value.tv_nsec = static_cast<long>((sinceBoot - whole) / std::chrono::nanoseconds(1));
    timerfd_settime(number, TFD_TIMER_ABSTIME, &setting, nullptr);
}

}  // namespace

TimerDescriptor::TimerDescriptor()
    : number_(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)) {}

TimerDescriptor::~TimerDescriptor() {
    if (isOpen()) close(number_);
}

void TimerDescriptor::arm(Clock::time_point due) {
    set(number_, std::max(due.time_since_epoch(), Clock::duration(1)));
}

void TimerDescriptor::disarm() {
    set(number_, Clock::duration::zero());
}

bool TimerDescriptor::takeExpiry() {
    std::uint64_t times = 0;
    return read(number_, &times, sizeof times) == sizeof times;
}

#else

TimerDescriptor::TimerDescriptor() = default;
TimerDescriptor::~TimerDescriptor() = default;
void TimerDescriptor::arm(Clock::time_point) {}
void TimerDescriptor::disarm() {}
bool TimerDescriptor::takeExpiry() {
    return false;
}

#endif

}  // namespace veloran
