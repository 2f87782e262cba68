#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <optional>

#include "base/instant.h"
#include "orbit/look_angles.h"

namespace veloran {

/// Look angles of one body within one quarter of a second, by offset, so that a picture may ask on
/// every frame. A request for another body or quarter throws all of it away.
class LiveGeoCache {
  public:
    using Observe = std::function<std::optional<TopocentricResult>(Instant)>;

    std::optional<TopocentricResult> lookUp(std::int64_t satId, Instant baseTime, double offset,
                                            const Observe& observe);

  private:
    double bucket_ = -std::numeric_limits<double>::infinity();  // seconds since 1970
    std::int64_t satId_ = -1;
    std::map<double, std::optional<TopocentricResult>> samples_;
};

}  // namespace veloran
