#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/instant.h"

namespace veloran {

/// One element set: the numbers and the two lines they came from or would be written as. Angles in
/// degrees, mean motion in revolutions per day, `bstar` per Earth radius.
struct TLEData {
    std::string name;
    std::int64_t noradId = 0;
    std::string line1;
    std::string line2;
    std::int64_t epochYear = 0;  ///< four digits
    double epochDays = 0;        ///< 1.0 is 1 January 00:00 UTC
    double bstar = 0;
    double inclination = 0;
    double raan = 0;
    double eccentricity = 0;
    double argPerigee = 0;
    double meanAnomaly = 0;
    double meanMotion = 0;
    std::int64_t revNumber = 0;
    std::string source;  ///< key of the group that supplied it, or several joined by ","

    struct EpochParts {
        Instant midnight;        ///< of the whole day, `epochDays` truncated toward zero
        double dayFraction = 0;  ///< the rest, negative where `epochDays` is
    };
    /// Absent where the calendar has no such day.
    std::optional<EpochParts> epochParts() const;
    /// Absent where epochParts is.
    std::optional<Instant> epochDate() const;
    /// Days from the epoch to `now`; negative for an epoch to come.
    std::optional<double> ageDays(Instant now) const;
    /// "23h", "3.2d", "12d", or "?" without an epoch.
    std::string ageString(Instant now) const;
};

}  // namespace veloran
