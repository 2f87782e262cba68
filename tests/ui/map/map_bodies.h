#pragma once

#include <memory>
#include <string>

#include "../ui_fixture.h"
#include "core/pass_info.h"
#include "orbit/sample_orbits.h"

namespace veloran::test {

/// A low circular orbit; its epoch lies shortly before the simulated machine's start.
inline SatellitePtr orbiting(double inclination, std::int64_t id = 44909,
                             const std::string& name = "RS-44", double revolutionsPerDay = 15.5) {
    auto satellite = std::make_shared<Satellite>(name, id);
    TLEData tle = lowOrbit();
    tle.epochYear = 2026;
    tle.epochDays = 325;
    tle.inclination = inclination;
    tle.meanMotion = revolutionsPerDay;
    satellite->tle = tle;
    satellite->initOrbit();
    return satellite;
}

inline PassInfo passOf(const SatellitePtr& satellite, Instant rise, double seconds) {
    return {.satellite = satellite, .pass = passAt(rise, seconds), .transmitter = std::nullopt};
}

inline constexpr Instant kMapStart{817000000.0};

}  // namespace veloran::test
