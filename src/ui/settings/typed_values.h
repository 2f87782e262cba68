#pragma once

#include <optional>
#include <string_view>

#include "core/maidenhead.h"

namespace veloran {

// What people type or paste where the settings ask for a number. A text that could mean two things
// says nothing here: it is absent, as one that does not read at all is. Blanks around are no part
// of a text.

/// A number with a point or a decimal comma. "1,500" may be a thousand and more, and is absent.
std::optional<double> typedNumber(std::string_view text);
std::optional<double> typedAltitude(std::string_view text);  ///< metres

/// Degrees north or east, negative for south and west: a number, a decimal comma always being one,
/// with a degree sign if it likes, and a letter N, S, E or W before or behind it instead of a sign.
std::optional<double> typedLatitude(std::string_view text);
std::optional<double> typedLongitude(std::string_view text);

/// Both in one text, "33.87, -84.34": latitude first, unless letters say otherwise. Between them
/// stands a comma, a semicolon, or blanks where these cannot part degrees from minutes.
std::optional<LatLon> typedPosition(std::string_view text);

/// What the two fields of a position say: a text with both, in either field, goes before the rest.
struct TypedPlace {
    std::optional<double> latitude;
    std::optional<double> longitude;
    bool operator==(const TypedPlace&) const = default;
};
TypedPlace typedPlace(std::string_view latitudeText, std::string_view longitudeText);

}  // namespace veloran
