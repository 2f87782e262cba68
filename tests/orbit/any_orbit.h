#pragma once

#include "sample_orbits.h"

namespace veloran::test {

/// Orbits of every kind that catalogues hold, and one of eight with elements that they should not.
inline SatRec anyOrbit(Random& random) {
    TLEData tle = randomOrbit(random);
    const double kind = random.between(0.0, 8.0);
    if (kind < 1.0) {  // nonsense, decaying or blowing up
        tle.eccentricity = random.between(0.0, 0.999);
        tle.meanMotion = random.between(0.1, 18.0);
        tle.bstar = random.between(-0.5, 0.5);
    } else if (kind < 2.0) {  // as high as a geostationary one and higher
        tle.eccentricity = random.between(0.0, 0.1);
        tle.meanMotion = random.between(0.3, 2.5);
    } else if (kind < 3.0) {  // long ellipses
        tle = orbitWithPerigee(random.between(150.0, 2000.0), random.between(0.6, 0.8));
        tle.inclination = random.between(0.0, 180.0);
        tle.argPerigee = random.between(0.0, 360.0);
    } else if (kind < 6.0) {  // low and round, with much drag
        tle.eccentricity = random.between(0.0, 0.02);
        tle.meanMotion = random.between(12.0, 16.3);
        tle.bstar = random.between(-1e-4, 3e-3);
    }
    return TLEParser::createSatRec(tle);
}

}  // namespace veloran::test
