#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "base/instant.h"
#include "orbit/satrec.h"
#include "sample_catalogue/sample_catalogue.h"

namespace veloran::bench {

/// The day on which every benchmark plays, at the epoch of its elements.
inline constexpr Instant kDay{817084800.0};  // 2026-11-23 00:00 UTC

/// Of Central Europe: degrees, metres.
inline constexpr double kLatitude = 50.1;
inline constexpr double kLongitude = 8.7;
inline constexpr double kAltitude = 120;

/// Made-up satellites, always the same, mixed as all active ones are: of 20, fourteen in low
/// constellation shells, three in sun-synchronous orbits, one near the height of a space station,
/// one of a navigation system or in a geostationary orbit, and one on a long ellipse or another.
std::vector<SampleSatellite> syntheticCatalogue(std::size_t count);
/// Low and nearly round orbits only, 400 to 1,400 km high.
std::vector<SampleSatellite> lowOrbits(std::size_t count);

/// The catalogue as the element service sends it.
std::string groupText(const std::vector<SampleSatellite>& satellites, Instant day = kDay);
std::vector<std::shared_ptr<const SatRec>> records(const std::vector<SampleSatellite>& satellites);

}  // namespace veloran::bench
