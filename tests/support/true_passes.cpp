#include "support/true_passes.h"

#include <algorithm>
#include <cstddef>

namespace veloran::test {
namespace {

constexpr double kStep = 30;
constexpr double kFineStep = 1;
constexpr double kDeepestDip = -1;      // degrees
constexpr double kLow = 2;              // degrees
constexpr double kShortestPass = 30;    // seconds
constexpr double kPeakPrecision = 0.1;  // seconds

/// The moment between two, over a height at one and not at the other, at which that changes.
Instant crossing(const ElevationAt& elevation, double height, Instant before, Instant after) {
    const bool wasOver = elevation(before) > height;
    for (int i = 0; i < 40; ++i) {
        const Instant mid = before + (after - before) / 2;
        ((elevation(mid) > height) == wasOver ? before : after) = mid;
    }
    return after;
}

std::vector<TruePass> staysUp(const ElevationAt& elevation, Instant from, Instant to) {
    std::vector<TruePass> stays;
    bool isUp = elevation(from) > 0;
    if (isUp) stays.push_back({from, to, 0, to});
    for (Instant before = from; before < to;) {
        const Instant after = std::min(before + kStep, to);
        if ((elevation(after) > 0) != isUp) {
            const Instant at = crossing(elevation, 0, before, after);
            if (isUp) {
                stays.back().set = at;
            } else {
                stays.push_back({at, to, 0, to});
            }
            isUp = !isUp;
        }
        before = after;
    }
    return stays;
}

bool isDip(const ElevationAt& elevation, Instant from, Instant to) {
    for (Instant t = from; t < to; t = t + kFineStep) {
        if (elevation(t) < kDeepestDip) return false;
    }
    return true;
}

struct Peak {
    Instant at;
    double elevation = -90;
};

/// Looks ever closer around the highest of some moments.
Peak highest(const ElevationAt& elevation, Instant from, Instant to) {
    Peak best{from, -90};
    while (to - from > kPeakPrecision) {
        constexpr int kParts = 200;
        const double part = (to - from) / kParts;
        for (int i = 0; i <= kParts; ++i) {
            const Instant at = from + part * i;
            const double height = elevation(at);
            if (height > best.elevation) best = {at, height};
        }
        from = best.at - part;
        to = best.at + part;
    }
    return best;
}

}  // namespace

std::vector<TruePass> truePasses(const ElevationAt& elevation, Instant from, Instant to) {
    std::vector<TruePass> passes;
    for (const auto& stay : staysUp(elevation, from, to)) {
        const bool goesOn = !passes.empty() && stay.rise - passes.back().set < 1800 &&
                            isDip(elevation, passes.back().set, stay.rise);
        if (goesOn) {
            passes.back().set = stay.set;
        } else {
            passes.push_back(stay);
        }
    }
    std::erase_if(passes, [](const auto& pass) { return pass.set - pass.rise < kShortestPass; });
    for (auto& pass : passes) {
        const auto peak = highest(elevation, pass.rise, pass.set);
        pass.maxElevation = peak.elevation;
        const bool isHigh = peak.elevation > kLow;
        pass.low = isHigh ? crossing(elevation, kLow, peak.at, pass.set) : pass.rise;
    }
    return passes;
}

}  // namespace veloran::test
