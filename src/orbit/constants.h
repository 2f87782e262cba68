#pragma once

#include <numbers>

namespace veloran {

inline constexpr double twoPi = 2.0 * std::numbers::pi;
inline constexpr double deg2rad = std::numbers::pi / 180.0;
inline constexpr double rad2deg = 180.0 / std::numbers::pi;
inline constexpr double minutesPerDay = 1440.0;
/// Revolutions per day over radians per minute.
inline constexpr double xpdotp = 1440.0 / twoPi;

/// A deliberate mixture of gravity models: the zonal terms and the radius are of WGS-84, `mu`,
/// `xke` and `tumin` of WGS-72. Element sets are fitted with WGS-72 time units; do not replace
/// this by any one published set.
namespace WGS84 {
inline constexpr double radiusEarthKm = 6378.137;
inline constexpr double mu = 398600.8;  // km^3/s^2; the propagator itself does not read it
inline constexpr double j2 = 0.00108262998905;
inline constexpr double j3 = -0.00000253215306;
inline constexpr double j4 = -0.00000161098761;
inline constexpr double xke = 0.07436691613317;     // 60 / sqrt(6378.135^3 / 398600.8)
inline constexpr double tumin = 13.44683969695931;  // 1 / xke
inline constexpr double j3oj2 = -0.0023388905587420003;
inline constexpr double flattening = 0.0033528106647474805;  // 1 / 298.257223563
inline constexpr double e2 = 0.0066943799901413165;          // f (2 - f)
}  // namespace WGS84

}  // namespace veloran
