#pragma once

#include <atomic>
#include <cstdint>

namespace veloran {

/// Marks where values pass from one thread to another through a queue of Qt's. The queue already
/// orders both sides; saying it again in our own code lets the thread sanitizer see it, which
/// cannot look into a Qt that was built without it.
class Handover {
  public:
    void give() noexcept { count_.fetch_add(1, std::memory_order_release); }
    void take() const noexcept { static_cast<void>(count_.load(std::memory_order_acquire)); }

  private:
    std::atomic<std::uint64_t> count_{0};
};

}  // namespace veloran
