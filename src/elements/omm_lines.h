#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The classic two lines written from the numbers of a message, as the element service writes them:
/// 68 columns and a check digit. All numbers given here have to be finite.
namespace veloran::omm_lines {

struct Epoch {
    std::int64_t year = 0;
    double days = 0;  ///< 1.0 is 1 January 00:00 UTC
};

/// "2026-04-05T13:09:00.000288", UTC without a zone mark. Months and days outside their range roll
/// over. Absent for anything else, and for days that no calendar has.
std::optional<Epoch> parseEpoch(std::string_view text);

struct Line1 {
    std::int64_t noradId = 0;
    std::string_view classification{};
    std::string_view intlDesignator{};  ///< as in the message, "1998-067A"
    Epoch epoch{};
    double meanMotionDot = 0;
    double meanMotionDdot = 0;
    double bstar = 0;
    std::int64_t ephemerisType = 0;
    std::int64_t elementSetNo = 0;
};

struct Line2 {
    std::int64_t noradId = 0;
    double inclination = 0;  ///< degrees, as the other angles
    double raan = 0;
    double eccentricity = 0;  ///< fitsEccentricity
    double argPerigee = 0;
    double meanAnomaly = 0;
    double meanMotion = 0;  ///< revolutions per day
    std::int64_t revNumber = 0;
};

/// Numbers beyond five digits are written as 99999: the form has no room for them.
std::string synthesizeLine1(const Line1& fields);
std::string synthesizeLine2(const Line2& fields);

/// Whether an eccentricity can be written as a whole number of ten-millionths.
bool fitsEccentricity(double eccentricity);

/// "1998-067A" as "98067A  "; other texts are padded or cut to the eight columns.
std::string formatIntlDesignator(std::string_view objectId);
/// " .00016717", "-1.00000000": a magnitude of 1 or more is one character wider.
std::string formatSignedDecimal(double value);
/// 0.00012 as " 12000-3". A mantissa that rounds up to 1 has six digits, as the service has it.
std::string formatExponentNotation(double value);
/// Blanks at the end, or the first `width` user-perceived characters.
std::string padOrTruncate(std::string_view text, std::size_t width);
/// Sum of the digits modulo 10, where "-" counts 1.
int checksum(std::string_view text);

}  // namespace veloran::omm_lines
