#pragma once

#include <optional>
#include <string>

namespace veloran {

/// Keeps the machine from going to sleep by itself, as far as it can be asked to. Main thread only.
class SleepInhibitor {
  public:
    virtual ~SleepInhibitor() = default;
    /// From now on the machine stays awake for this reason, told to people in these words; without
    /// a reason it may sleep. The same reason again changes nothing.
    virtual void keepAwake(const std::optional<std::string>& why) = 0;
};

}  // namespace veloran
