#pragma once

#include "base/instant.h"
#include "ui/map/map_camera.h"

namespace veloran {

/// The way of the camera from one place to another, as a function of time.
struct CameraMotion {
    static constexpr double kSeconds = 0.4;

    MapCamera from;
    MapCamera to;
    Instant start;

    MapCamera at(Instant now) const { return easedCamera(from, to, share(now)); }
    bool isOver(Instant now) const { return share(now) >= 1; }

  private:
    /// A clock that is set back ends the motion rather than holding it up.
    double share(Instant now) const { return now < start ? 1 : (now - start) / kSeconds; }
};

}  // namespace veloran
