// Grid locators: the bytes as a text, and the first sixteen as latitude and longitude.

#include <cmath>
#include <cstring>
#include <string>

#include "base/text.h"
#include "checks.h"
#include "core/maidenhead.h"
#include "require.h"
#include "ui/settings/settings_form.h"

namespace veloran::fuzz {

namespace {

bool lies(char c, char first, char last) {
    return c >= first && c <= last;
}

/// The locator's six characters in the usual cases; absent for cells off the map.
std::optional<std::string> plainForm(std::string_view text) {
    if (text.size() != 6) return std::nullopt;
    const std::string field = upperCased(text.substr(0, 2));
    const std::string square(text.substr(2, 2));
    const std::string subsquare = lowerCased(text.substr(4));
    const bool onMap = lies(field[0], 'A', 'R') && lies(field[1], 'A', 'R') &&
                       lies(square[0], '0', '9') && lies(square[1], '0', '9') &&
                       lies(subsquare[0], 'a', 'x') && lies(subsquare[1], 'a', 'x');
    return onMap ? std::optional(field + square + subsquare) : std::nullopt;
}

void checkText(std::string_view text) {
    const auto position = readLocator(text);
    if (position) {
        require(canHaveLocator(position->lat, position->lon), "a centre is a position");
        require(readsAsLocator(toMaidenhead(position->lat, position->lon)),
                "a position that was read has a locator");
    }
    if (const auto plain = plainForm(text)) {
        require(position && toMaidenhead(position->lat, position->lon) == *plain,
                "a locator leads back to itself");
    }
}

void checkPosition(double lat, double lon) {
    if (!canHaveLocator(lat, lon)) return;
    const std::string locator = toMaidenhead(lat, lon);
    require(locator.size() == 6, "a locator has six characters");
    const auto centre = readLocator(locator);
    require(centre.has_value(), "a locator that is written reads");
    // The pole and the date line, to the last digit of the sums, have the cell behind the last one.
    if (lat + 90 >= 180 || lon + 180 >= 360) return;
    require(std::abs(centre->lat - lat) < 1.0 / 48 + 1e-9, "a latitude lies in its cell");
    require(std::abs(centre->lon - lon) < 1.0 / 24 + 1e-9, "a longitude lies in its cell");
    require(toMaidenhead(centre->lat, centre->lon) == locator, "a centre lies in its cell");
}

}  // namespace

void checkLocators(std::string_view bytes) {
    checkText(bytes);
    double angles[2];
    if (bytes.size() < sizeof angles) return;
    std::memcpy(angles, bytes.data(), sizeof angles);
    checkPosition(angles[0], angles[1]);
    checkPosition(std::remainder(angles[0], 180), std::remainder(angles[1], 360));
}

}  // namespace veloran::fuzz
