#include "core/same_pass.h"

namespace veloran {

PassSpan spanOf(std::int64_t noradId, const PredictedPass& pass) {
    return {noradId, pass.riseTime, pass.setTime};
}

bool isSamePass(const PassSpan& a, const PassSpan& b) {
    if (a.noradId != b.noradId) return false;
    // A pass is the same as itself, however short it is.
    const bool overlap = a.riseTime < b.setTime && b.riseTime < a.setTime;
    return overlap || a.riseTime == b.riseTime;
}

}  // namespace veloran
