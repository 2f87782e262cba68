#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>

#include "elements/tle_parser.h"
#include "orbit/constants.h"
#include "orbit/sgp4.h"

namespace veloran::test {

/// A space station: circular, inclined, low.
inline TLEData lowOrbit() {
    TLEData tle;
    tle.name = "LOW";
    tle.noradId = 99001;
    tle.epochYear = 2024;
    tle.epochDays = 123.5;
    tle.bstar = 1e-4;
    tle.inclination = 51.6;
    tle.raan = 100.0;
    tle.eccentricity = 0.0011;
    tle.argPerigee = 130.0;
    tle.meanAnomaly = 220.0;
    tle.meanMotion = 15.5;
    return tle;
}

inline TLEData geostationaryOrbit() {
    TLEData tle = lowOrbit();
    tle.name = "GEO";
    tle.bstar = 0.0;
    tle.inclination = 0.8;
    tle.eccentricity = 0.0003;
    tle.meanMotion = 1.0027;
    return tle;
}

/// An orbit with its perigee at a height, both in km; the mean motion is Kepler's.
inline TLEData orbitWithPerigee(double perigeeKm, double eccentricity) {
    TLEData tle = lowOrbit();
    tle.eccentricity = eccentricity;
    const double axis = (perigeeKm / WGS84::radiusEarthKm + 1.0) / (1.0 - eccentricity);
    tle.meanMotion = WGS84::xke / std::pow(axis, 1.5) * xpdotp;
    return tle;
}

inline std::shared_ptr<const SatRec> satrecOf(const TLEData& tle) {
    return std::make_shared<const SatRec>(TLEParser::createSatRec(tle));
}

/// The epoch of these sets: 2024 May 2, 12:00 UTC.
inline Instant sampleEpoch() {
    return Instant{736344000.0};
}

/// Random numbers from a seed that a failure prints and that $VELORAN_SEED sets.
class Random {
  public:
    Random() : seed_(givenSeed()), engine_(seed_) {}
    std::string trace() const { return "VELORAN_SEED=" + std::to_string(seed_); }
    double between(double low, double high) {
        return low + (high - low) * (static_cast<double>(engine_()) / 4294967296.0);
    }

  private:
    static std::uint32_t givenSeed() {
        const char* given = std::getenv("VELORAN_SEED");
        return given ? static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10)) : 20240502U;
    }
    std::uint32_t seed_;
    std::mt19937 engine_;
};

/// Any orbit from low to highly eccentric that stays up for days.
inline TLEData randomOrbit(Random& random) {
    TLEData tle = orbitWithPerigee(random.between(350.0, 2500.0), random.between(0.0, 0.6));
    tle.bstar = random.between(0.0, 1e-5);
    tle.inclination = random.between(0.5, 179.0);
    tle.raan = random.between(0.0, 360.0);
    tle.argPerigee = random.between(0.0, 360.0);
    tle.meanAnomaly = random.between(0.0, 360.0);
    return tle;
}

}  // namespace veloran::test
