#pragma once

#include <functional>
#include <vector>

#include "base/instant.h"

namespace veloran::test {

/// When a body is up, as a plain search tells.
struct TruePass {
    Instant rise;
    Instant set;
    double maxElevation = 0;  ///< degrees
    Instant low;              ///< from then on until the set it stays under 2 degrees

    bool overlaps(const TruePass& other) const { return rise < other.set && other.rise < set; }
};

/// Degrees; -90 where the body is absent.
using ElevationAt = std::function<double(Instant)>;

/// The stays above the horizon from `from` to `to`, in order of time: looks every half minute and
/// bisects each crossing. What is up at either end rises or sets there, so a search for whole
/// passes begins well before the first of them. A dip of less than a degree under the horizon is no
/// set; what lasts under 30 seconds is no pass. Shares nothing with the program but the look
/// angles.
std::vector<TruePass> truePasses(const ElevationAt& elevation, Instant from, Instant to);

}  // namespace veloran::test
