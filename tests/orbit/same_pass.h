#pragma once

#include <algorithm>

#include "orbit/pass_predictor.h"

namespace veloran::test {

/// Bit by bit; what is not a number equals its like.
inline bool same(double a, double b) {
    return a == b || (a != a && b != b);
}

inline bool same(const PassPoint& a, const PassPoint& b) {
    return a.date == b.date && same(a.azimuth, b.azimuth) && same(a.elevation, b.elevation) &&
           same(a.range, b.range) && same(a.rangeRate, b.rangeRate);
}

inline bool same(const PredictedPass& a, const PredictedPass& b) {
    return a.riseTime == b.riseTime && a.peakTime == b.peakTime && a.setTime == b.setTime &&
           same(a.maxElevation, b.maxElevation) && same(a.riseAzimuth, b.riseAzimuth) &&
           same(a.setAzimuth, b.setAzimuth) && same(a.peakAzimuth, b.peakAzimuth) &&
           same(a.duration, b.duration) &&
           std::equal(a.trackPoints.begin(), a.trackPoints.end(), b.trackPoints.begin(),
                      b.trackPoints.end(), [](const auto& p, const auto& q) { return same(p, q); });
}

}  // namespace veloran::test
