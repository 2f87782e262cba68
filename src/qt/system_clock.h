#pragma once

#include "platform/clock.h"

namespace veloran {

/// The machine's wall clock, to the microsecond.
class SystemClock final : public Clock {
  public:
    Instant now() const override;
};

}  // namespace veloran
