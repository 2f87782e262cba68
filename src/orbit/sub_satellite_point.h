#pragma once

namespace veloran {

/// The point of the ground below a body.
struct SubSatellitePoint {
    double latitudeDeg = 0;   ///< geodetic
    double longitudeDeg = 0;  ///< east, -180 to +180
    double altitudeKm = 0;    ///< above the ellipsoid; for the Sun and the Moon the centre distance
};

}  // namespace veloran
