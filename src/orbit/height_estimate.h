#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

#include "base/instant.h"
#include "orbit/look_angles.h"
#include "orbit/satrec.h"
#include "orbit/vec3.h"

namespace veloran {

/// Estimates how high a satellite stands over an observer, for moments that lie close together: by
/// the polynomial of fifth degree through six places that the propagator gave, a minute or more
/// apart for a low orbit (Lagrange's formula). Computes those when they are first needed, so one
/// thread at a time may ask.
class HeightEstimate {
  public:
    HeightEstimate(std::shared_ptr<const SatRec> satrec, const GroundObserver& observer,
                   Instant from, Instant to);

    struct Elevation {
        double value;   ///< degrees
        double margin;  ///< by which it may differ from what the propagator's own place gives
    };
    /// Absent where nothing is sure: for an orbit whose course has no bound, near zenith and nadir.
    std::optional<Elevation> at(Instant date);

  private:
    struct Place {
        std::int64_t step = -1;
        Vec3 fromHere;  // km, see GroundObserver::fromHere; NaN where the propagation fails
    };
    const Vec3& placeAt(std::int64_t step);

    std::shared_ptr<const SatRec> satrec_;
    GroundObserver observer_;
    Instant start_;       // of step 0
    double spacing_ = 0;  // s
    double errorKm_;      // of an interpolated place; NaN if there is no bound
    /// More than the longest pass takes, as a ring.
    std::array<Place, 128> places_;
};

}  // namespace veloran
