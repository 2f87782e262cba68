#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/instant.h"

namespace veloran {

/// One line of data/sample_satellites.csv: angles in degrees at 2025-01-01 00:00 UTC, mean motion
/// in revolutions per day.
struct SampleSatellite {
    std::string name;
    std::int64_t noradId = 0;
    std::string designator;
    double inclination = 0;
    double eccentricity = 0;
    double meanMotion = 0;
    double raan = 0;
    double argPerigee = 0;
    double meanAnomaly = 0;
    double bstar = 0;
    std::vector<std::string> groups;

    bool isIn(std::string_view group) const;
};

/// The whole file; absent when a line does not read. Lines that start with "#" are comments.
std::optional<std::vector<SampleSatellite>> readSampleCatalogue(std::string_view csv);

/// The same satellite with its angles carried to `day` by the mean motion and the secular rates of
/// J2, so that sun-synchronous orbits keep their time of day.
SampleSatellite carriedTo(const SampleSatellite& satellite, Instant day);

/// The satellites of one group as a JSON array of orbit mean-elements messages, in the form of the
/// element service, with `day` as their epoch.
std::string ommArray(const std::vector<SampleSatellite>& satellites, std::string_view group,
                     Instant day);

/// Midnight UTC before `t`.
Instant startOfDay(Instant t);

}  // namespace veloran
