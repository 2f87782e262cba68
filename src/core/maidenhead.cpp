#include "core/maidenhead.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "base/checked.h"
#include "base/text.h"

namespace veloran {

namespace {

/// Far beyond any angle that is meant; up to here the arithmetic below is good to a subsquare.
constexpr double kLargestAngle = 1e9;

bool inRange(double angle, double lowest) {
    return angle >= lowest && angle <= kLargestAngle;  // false for NaN
}

char letter(std::string_view alphabet, std::int64_t index, std::int64_t last) {
    return alphabet[static_cast<std::size_t>(std::min(index, last))];
}

/// How far a letter stands behind "A".
double letterValue(std::string_view character) {
    const char c = character.size() == 1 ? character.front() : '\0';
    if (c < 'A') stopProgram("a grid locator has a letter that is none");
    return c - 'A';
}

bool isLetter(std::string_view character) {
    return character.size() == 1 && character.front() >= 'A' && character.front() <= 'Z';
}

}  // namespace

std::optional<LatLon> fromMaidenhead(std::string_view locator) {
    const std::string upper = upperCased(locator);
    const auto c = characters(upper, 6);
    if (c.size() < 4) return std::nullopt;
    const double fLon = letterValue(c[0]);
    const double fLat = letterValue(c[1]);
    const auto sLon = parseInt64(c[2]);
    const auto sLat = parseInt64(c[3]);
    if (!sLon || !sLat) return std::nullopt;
    const double lonOfSquare = fLon * 20 + static_cast<double>(*sLon) * 2;
    const double latOfSquare = fLat * 10 + static_cast<double>(*sLat);
    if (c.size() < 6) return LatLon{latOfSquare - 90 + 0.5, lonOfSquare - 180 + 1};
    return LatLon{latOfSquare + letterValue(c[5]) / 24 - 90 + 1.0 / 48,
                  lonOfSquare + letterValue(c[4]) / 12 - 180 + 1.0 / 24};
}

bool readsAsLocator(std::string_view text) {
    const std::string upper = upperCased(text);
    const auto c = characters(upper, 6);
    if (c.size() < 4) return true;  // absent, without harm
    const bool field = isLetter(c[0]) && isLetter(c[1]);
    return field && (c.size() < 6 || (isLetter(c[4]) && isLetter(c[5])));
}

bool canHaveLocator(double lat, double lon) {
    return inRange(lat, -90) && inRange(lon, -180);
}

std::string toMaidenhead(double lat, double lon) {
    if (!canHaveLocator(lat, lon)) stopProgram("position out of range for a grid locator");
    constexpr std::string_view kUpper = "ABCDEFGHIJKLMNOPQRSTUVWX";
    constexpr std::string_view kLower = "abcdefghijklmnopqrstuvwx";
    const double lonAdj = lon + 180;
    const double latAdj = lat + 90;

    const std::int64_t fieldLon = checkedInt64(lonAdj / 20);
    const std::int64_t fieldLat = checkedInt64(latAdj / 10);
    const double lonInField = lonAdj - static_cast<double>(fieldLon) * 20;
    const double latInField = latAdj - static_cast<double>(fieldLat) * 10;
    const std::int64_t squareLon = checkedInt64(lonInField / 2);
    const std::int64_t squareLat = checkedInt64(latInField);
    const std::int64_t subLon =
        checkedInt64((lonInField - static_cast<double>(squareLon) * 2) * 12);
    const std::int64_t subLat = checkedInt64((latInField - static_cast<double>(squareLat)) * 24);

    // Only the letters are capped: the north pole and the date line start a cell past the last one,
    // and keep that cell's square and subsquare.
    return fmt::format("{}{}{}{}{}{}", letter(kUpper, fieldLon, 17), letter(kUpper, fieldLat, 17),
                       squareLon, squareLat, letter(kLower, subLon, 23),
                       letter(kLower, subLat, 23));
}

}  // namespace veloran
