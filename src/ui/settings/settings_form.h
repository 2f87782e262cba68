#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/app_state.h"
#include "core/maidenhead.h"

namespace veloran {

// The texts of the settings and what they say, without a widget.

/// Where a text does not read, and where the program could not bear what it says (a pole that has
/// been passed, a port of 17 bits), the value is absent and the old one stays. There is no other
/// test: 200 is a latitude here.
std::optional<double> readLatitude(std::string_view text);
std::optional<double> readLongitude(std::string_view text);
std::optional<double> readAltitude(std::string_view text);  ///< metres
std::optional<std::int64_t> readPort(std::string_view text);
std::optional<double> readUpdateRate(std::string_view text);  ///< hertz, of any size
/// The centre of a grid locator, with blanks around it or not; absent for a text that is none.
std::optional<LatLon> readLocator(std::string_view text);

std::string coordField(double degrees);     ///< "33.870000"
std::string altitudeField(double metres);   ///< "300"
std::string updateRateField(double hertz);  ///< "10"
/// How many groups of a section are subscribed: "2/5", or "5" for none of them.
std::string sectionCount(std::size_t subscribed, std::size_t groups);

/// The fields that take effect together, with "Apply".
struct SettingsTexts {
    std::string latitude;
    std::string longitude;
    std::string altitude;
    std::string host;
    std::string port;
    std::string updateRate;
    bool operator==(const SettingsTexts&) const = default;
};

SettingsTexts settingsTexts(const AppState& state);
/// What was typed (typed_values.h), each number in the plain form that is read above; a text that
/// says none stays as it is.
SettingsTexts plainTexts(SettingsTexts typed);
/// Takes over what reads; the locator follows the position, and the passes are searched anew. The
/// host is taken as it stands; a connection that there is stays.
void applySettings(AppState& state, const SettingsTexts& texts);

}  // namespace veloran
