#pragma once

#include "base/instant.h"

namespace veloran {

/// The one source of the present time. May be asked from any thread.
class Clock {
  public:
    virtual ~Clock() = default;
    virtual Instant now() const = 0;
};

}  // namespace veloran
