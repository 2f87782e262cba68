#pragma once

#include <cstdint>

namespace veloran {

// What the program can bear of a stored or typed number. A value beyond is refused as an unreadable
// one is.

/// Beyond it a number is no measurement, and no longer fits every text and integer made of it.
inline constexpr double kLargestNumber = 1e9;
/// Below them a position has no locator; there is no such end above.
inline constexpr double kLowestLatitude = -90;
inline constexpr double kLowestLongitude = -180;
inline constexpr std::int64_t kHighestPort = 65535;

}  // namespace veloran
