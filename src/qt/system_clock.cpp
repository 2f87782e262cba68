#include "qt/system_clock.h"

#include <chrono>

namespace veloran {

Instant SystemClock::now() const {
    const auto sinceUnixEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Instant::fromUnixSeconds(std::chrono::duration<double>(sinceUnixEpoch).count());
}

}  // namespace veloran
