#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/instant.h"
#include "orbit/pass_predictor.h"
#include "ui/ink.h"

namespace veloran {

// The texts of the views as pure functions, the same under every locale. A number that is not
// finite reads "—" wherever a number would stand.

/// "12.30 km" with `decimals` 2 and `unit` " km".
std::string numberText(double value, int decimals, std::string_view unit);

// ---- Frequencies, hertz.
std::string formatBigFreq(double hz);   ///< "145.800.000", a dial's three groups; "—" for 0
std::string formatMHz(double hz);       ///< "145.800000 MHz"; "—" for 0
std::string formatHzSigned(double hz);  ///< "+100 Hz"; "0 Hz" below half a hertz
std::string rateText(double hzPerS);    ///< "-123.5 Hz/s"
std::string updateRateText(double hz);  ///< "10 Hz"

/// Frequency at the satellite, hertz; 0 without a channel.
double rxSatOutputFreq(std::optional<double> centerHz, double passbandOffset, double calibration);
/// `inverting` is the downlink's: an inverting transponder turns the passband round.
double txSatInputFreq(std::optional<double> uplinkCenterHz, double passbandOffset, bool inverting);

// ---- Angles, degrees, and distances, km.
std::string azimuthText(double degrees);    ///< "12.3°"
std::string rangeText(double km);           ///< "1234 km"
std::string elevationText(double degrees);  ///< "45°"
Ink elevationColor(double degrees);         ///< how good a pass is by its greatest elevation
std::string compassDir(double azimuth);     ///< one of the eight points
/// "SW-NE", from the first and the last point of a track; empty below two points.
std::string listDirection(std::span<const PassPoint> trackPoints);

// ---- Times.
std::string relativeTime(double secondsAhead);  ///< "in 1h 5m", "in 0m"; "now" once it has begun
std::string formatDuration(double seconds);     ///< "10m05s"
std::string listTime(Instant t);                ///< "HH:mm" in the system's time zone
/// The same, behind the day where that is wanted: "Oct 4 15:37"; "—" beyond the calendar.
std::string calendarTime(Instant t, bool withDay);

// ---- Small labels.
std::string observerPosition(double latitude, double longitude);  ///< "33.8700°N 84.3400°W"
std::string endpointText(std::string_view host, std::int64_t port);
std::string noradText(std::int64_t noradId);
std::string upcomingText(std::size_t count);
std::string queuedBadge(std::size_t count);  ///< "QUEUED 2"
/// The question which of two clashing passes to keep; elevations in degrees.
std::string conflictMessage(std::string_view incoming, double incomingElevation,
                            std::string_view existing, double existingElevation);
std::string versionText(const std::optional<std::string>& version);  ///< "v1.2", "v?"

}  // namespace veloran
