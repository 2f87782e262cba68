#pragma once

#include "base/instant.h"
#include "orbit/look_angles.h"
#include "orbit/satrec.h"

namespace veloran {

/// Tells for how long a satellite that is far below an observer's horizon surely stays there: as
/// long as it would need at its greatest angular speed to the nearest place where it might stand
/// higher, or to the nadir, where an elevation may not be a number. The speed and the largest
/// distance are bounds on what the propagator's own equations can give from `from` to `to`, not on
/// what nature would do.
class FarBelow {
  public:
    FarBelow(const SatRec& satrec, const GroundObserver& observer, Instant from, Instant to);

    /// The satellite is absent or lower than Heights::farBelow from `at` until then, and not at the
    /// nadir; `at` itself where nothing is sure. `distanceKm` is from the Earth's centre, `upKm`
    /// that along the observer's vertical.
    Instant sureUntil(Instant at, double upKm, double distanceKm) const;

  private:
    double nearestAngle_;  // from the vertical, radians; NaN if nothing is sure
    double nadirAngle_;    // the same, of where the nadir begins
    double angularSpeed_;  // rad/s
};

}  // namespace veloran
