#include "core/maidenhead.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "base/checked.h"

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

}  // namespace

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
