#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/unique_id.h"
#include "core/satellite.h"
#include "orbit/pass_predictor.h"
#include "transmitters/transmitter.h"

namespace veloran {

/// The row that the user has picked, with its own copy of the pass.
struct PassInfo {
    UniqueId id = UniqueId::make();
    SatellitePtr satellite;
    PredictedPass pass;
    std::optional<Transmitter> transmitter;

    const std::string& satName() const { return satellite->name; }
    std::int64_t noradId() const { return satellite->id; }
    std::string riseTimeUTC() const;  ///< "HH:mm:ss UTC"
    std::string peakTimeUTC() const;
    std::string setTimeUTC() const;
    std::string riseTimeLocal() const;  ///< "HH:mm:ss" in the system's time zone
    std::string peakTimeLocal() const;
    std::string setTimeLocal() const;
    std::string durationString() const;   ///< "10m 05s"
    std::string maxElString() const;      ///< "45.3°"
    std::string directionString() const;  ///< "SSW → NE"
};

/// One of the sixteen points for an azimuth in degrees.
std::string compassDirection(double azimuth);
std::string directionText(double riseAzimuth, double setAzimuth);  ///< "SSW → NE"
std::string maxElevationText(double degrees);                      ///< "45.3°"
/// "HH:mm:ss UTC".
std::string utcTimeText(Instant t);
/// A clock text in the system's time zone; `withSeconds` picks "HH:mm:ss" over "HH:mm".
std::string localTimeText(Instant t, bool withSeconds);
std::string durationText(double seconds);  ///< "%dm %02ds"

}  // namespace veloran
