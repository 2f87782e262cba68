#pragma once

#include <functional>
#include <optional>

namespace veloran {

/// Where the machine stands.
class LocationService {
  public:
    struct Position {
        double latitude = 0;             ///< degrees north
        double longitude = 0;            ///< degrees east
        std::optional<double> altitude;  ///< metres above the sea, where it is known
    };
    /// Called once, later, on the main thread; absent when there is no service, no permission or no
    /// known place.
    using Completion = std::function<void(std::optional<Position>)>;

    virtual ~LocationService() = default;
    /// Main thread only; returns at once.
    virtual void locate(Completion completion) = 0;
};

}  // namespace veloran
