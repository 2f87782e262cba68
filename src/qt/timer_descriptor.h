#pragma once

#include <chrono>

namespace veloran {

/// A timer of the kernel's that a loop waits for as for a socket: it can be read once its moment
/// has come. There is none on other systems than Linux, nor when all descriptors are taken.
class TimerDescriptor {
  public:
    using Clock = std::chrono::steady_clock;

    TimerDescriptor();
    ~TimerDescriptor();
    TimerDescriptor(const TimerDescriptor&) = delete;
    TimerDescriptor& operator=(const TimerDescriptor&) = delete;

    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }

    /// Replaces an earlier moment; one that has passed is now.
    void arm(Clock::time_point due);
    void disarm();
    /// Whether the moment has come. Asked once for each: the answer takes it.
    bool takeExpiry();

  private:
    int number_ = -1;
};

}  // namespace veloran
