#include "core/live_geo_cache.h"

#include <cmath>

namespace veloran {

std::optional<TopocentricResult> LiveGeoCache::lookUp(std::int64_t satId, Instant baseTime,
                                                      double offset, const Observe& observe) {
    const double bucket = std::floor(baseTime.unixSeconds() * 4) / 4;
    if (bucket != bucket_ || satId != satId_) {
        bucket_ = bucket;
        satId_ = satId;
        samples_.clear();
    }
    if (const auto known = samples_.find(offset); known != samples_.end()) return known->second;
    const auto result = observe(Instant::fromUnixSeconds(bucket + offset));
    samples_.emplace(offset, result);
    return result;
}

}  // namespace veloran
