#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veloran {

/// The six-character locator of a position in degrees. A latitude under -90, a longitude under -180
/// or a value that is not finite stops the program; test what comes from outside.
std::string toMaidenhead(double lat, double lon);

/// A position in degrees.
struct LatLon {
    double lat = 0;
    double lon = 0;
};

/// The centre of a locator's square, or of its subsquare with six characters and more; case does
/// not matter. Absent for under four characters and where a digit is missing. The letters have to
/// be ASCII and not below "A", or the program stops; test what comes from outside.
std::optional<LatLon> fromMaidenhead(std::string_view locator);

/// Whether fromMaidenhead can take a text, and letters alone stand where a locator has letters.
bool readsAsLocator(std::string_view text);

/// Whether toMaidenhead can take the position.
bool canHaveLocator(double lat, double lon);

}  // namespace veloran
