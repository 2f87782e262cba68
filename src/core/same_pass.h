#pragma once

#include <cstdint>

#include "base/instant.h"
#include "orbit/pass_predictor.h"

namespace veloran {

/// As much of a pass as it takes to know it again: whose it is, and from when to when.
struct PassSpan {
    std::int64_t noradId = 0;
    Instant riseTime;
    Instant setTime;
};

PassSpan spanOf(std::int64_t noradId, const PredictedPass& pass);

/// Whether both tell of one pass of one body. Passes of a body never overlap, while each search and
/// each set of elements gives them slightly other ends: so they are one when their times overlap.
bool isSamePass(const PassSpan& a, const PassSpan& b);

}  // namespace veloran
