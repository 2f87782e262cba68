#pragma once

#include "base/instant.h"
#include "orbit/satrec.h"

namespace veloran {

/// What the propagator's own equations can give, whatever nature would do. NaN where the orbit is
/// none of those that this knows: with linear rates, much drag, a long ellipse, angles of many
/// turns, or ten years from its epoch.
struct OrbitBounds {
    double largestDistance = 0;  ///< from the Earth's centre, Earth radii
    double angularSpeed = 0;     ///< of the direction from the Earth's centre, rad/min
    /// Of the place over the turning Earth, the size of the sixth derivative by time, Earth radii
    /// per min^6. NaN also where the propagation may fail.
    double sixthDerivative = 0;
    /// How suddenly, in Earth radii per minute, the place may change its course where the
    /// eccentricity is kept from falling below its least value.
    double kink = 0;
};

/// Rotation of the Earth against the stars, rad/s, rounded up.
inline constexpr double largestEarthRotation = 7.3e-5;

OrbitBounds boundsOf(const SatRec& satrec, Instant from, Instant to);

}  // namespace veloran
