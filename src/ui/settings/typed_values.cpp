#include "ui/settings/typed_values.h"

#include <string>

#include "base/text.h"
#include "core/setting_limits.h"

namespace veloran {

namespace {

constexpr std::size_t kLongest = 100;  // bytes; no pair has as many
constexpr std::string_view kDegree = "\u00b0";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// One form for each of the blanks, minus signs and degree signs that a paste may bring along.
std::string plainCharacters(std::string_view text) {
    std::string plain;
    for (const std::string_view c : characters(text)) {
        if (trimmed(c, Blanks::withNewlines).empty()) {
            plain += ' ';
        } else if (c == "\u2212") {
            plain += '-';
        } else {
            plain += c == "\u00ba" ? kDegree : c;
        }
    }
    return plain;
}

std::string_view withoutBlanks(std::string_view text) {
    return trimmed(text, Blanks::horizontal);
}

/// With a point, or a comma between digits in its place.
std::optional<double> decimal(std::string_view text) {
    const auto comma = text.find(',');
    if (comma == std::string_view::npos) return parseDouble(text);
    const bool isBetweenDigits = comma > 0 && isDigit(text[comma - 1]) && comma + 1 < text.size() &&
                                 isDigit(text[comma + 1]);
    if (!isBetweenDigits || text.find('.') != std::string_view::npos) return std::nullopt;
    std::string withPoint(text);
    withPoint[comma] = '.';
    return parseDouble(withPoint);
}

/// "1,500", "-12,000": a thousand and more, as English groups it.
bool mayBeGrouped(std::string_view text) {
    if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
    const auto comma = text.find(',');
    return comma != std::string_view::npos && comma >= 1 && comma <= 3 &&
           text.size() - comma == 4 && text.front() != '0';
}

struct Angle {
    double degrees = 0;
    char letter = 0;  ///< N, S, E, W, or 0 for none
    bool isSigned = false;
    bool hasDegreeSign = false;
    bool hasFraction = false;
};

bool isNorthOrSouth(const Angle& angle) {
    return angle.letter == 'N' || angle.letter == 'S';
}

/// N, S, E or W for a letter in either case; else 0.
char hemisphere(char c) {
    constexpr std::string_view kLetters = "NSEWnsew";
    const auto found = kLetters.find(c);
    return found == std::string_view::npos ? '\0' : kLetters[found % 4];
}

char takeHemisphere(std::string_view& text) {
    char letter = 0;
    if (text.empty()) return letter;
    if ((letter = hemisphere(text.front()))) {
        text.remove_prefix(1);
    } else if ((letter = hemisphere(text.back()))) {
        text.remove_suffix(1);
    }
    return letter;
}

std::optional<Angle> readAngle(std::string_view text) {
    text = withoutBlanks(text);
    Angle angle{.letter = takeHemisphere(text)};
    text = withoutBlanks(text);
    if (text.ends_with(kDegree)) {
        angle.hasDegreeSign = true;
        text = withoutBlanks(text.substr(0, text.size() - kDegree.size()));
    }
    angle.isSigned = text.starts_with('+') || text.starts_with('-');
    angle.hasFraction = text.find_first_of(".,") != std::string_view::npos;
    const auto number = decimal(text);
    if (!number || (angle.isSigned && angle.letter)) return std::nullopt;
    const bool isNegative = angle.letter == 'S' || angle.letter == 'W';
    angle.degrees = isNegative && *number != 0 ? -*number : *number;
    return angle;
}

std::optional<double> within(double lowest, double number) {
    return number >= lowest && number <= kLargestNumber ? std::optional(number) : std::nullopt;
}

std::optional<double> latitudeOf(const Angle& angle) {
    if (angle.letter && !isNorthOrSouth(angle)) return std::nullopt;
    return within(kLowestLatitude, angle.degrees);
}

std::optional<double> longitudeOf(const Angle& angle) {
    if (isNorthOrSouth(angle)) return std::nullopt;
    return within(kLowestLongitude, angle.degrees);
}

/// Whether "A B" cannot be degrees and minutes of one angle, as "52 31" can.
bool areTwoAngles(const Angle& first, const Angle& second) {
    return first.hasFraction || second.isSigned || first.letter ||
           (first.hasDegreeSign && second.hasDegreeSign);
}

std::optional<LatLon> pairOf(const Angle& first, const Angle& second) {
    if (!first.letter != !second.letter) return std::nullopt;
    const bool isTurned = first.letter && !isNorthOrSouth(first);
    const auto latitude = latitudeOf(isTurned ? second : first);
    const auto longitude = longitudeOf(isTurned ? first : second);
    if (!latitude || !longitude) return std::nullopt;
    return LatLon{*latitude, *longitude};
}

/// What the text says when it is parted at one of its characters.
std::optional<LatLon> pairAround(std::string_view text, std::size_t place) {
    const char separator = text[place];
    if (separator != ',' && separator != ';' && separator != ' ') return std::nullopt;
    const auto first = readAngle(text.substr(0, place));
    const auto second = readAngle(text.substr(place + 1));
    if (!first || !second) return std::nullopt;
    if (separator == ' ' && !areTwoAngles(*first, *second)) return std::nullopt;
    return pairOf(*first, *second);
}

}  // namespace

std::optional<double> typedNumber(std::string_view text) {
    const std::string plain = plainCharacters(text);
    const std::string_view number = withoutBlanks(plain);
    return mayBeGrouped(number) ? std::nullopt : decimal(number);
}

std::optional<double> typedAltitude(std::string_view text) {
    const auto number = typedNumber(text);
    return number ? within(-kLargestNumber, *number) : std::nullopt;
}

std::optional<double> typedLatitude(std::string_view text) {
    const auto angle = readAngle(plainCharacters(text));
    return angle ? latitudeOf(*angle) : std::nullopt;
}

std::optional<double> typedLongitude(std::string_view text) {
    const auto angle = readAngle(plainCharacters(text));
    return angle ? longitudeOf(*angle) : std::nullopt;
}

std::optional<LatLon> typedPosition(std::string_view text) {
    if (text.size() > kLongest) return std::nullopt;
    const std::string plain = plainCharacters(text);
    if (readAngle(plain)) return std::nullopt;
    std::optional<LatLon> only;
    for (std::size_t place = 0; place < plain.size(); ++place) {
        const auto found = pairAround(plain, place);
        if (!found) continue;
        if (only && (only->lat != found->lat || only->lon != found->lon)) return std::nullopt;
        only = found;
    }
    return only;
}

TypedPlace typedPlace(std::string_view latitudeText, std::string_view longitudeText) {
    for (const std::string_view text : {latitudeText, longitudeText}) {
        if (const auto both = typedPosition(text)) return {both->lat, both->lon};
    }
    return {typedLatitude(latitudeText), typedLongitude(longitudeText)};
}

}  // namespace veloran
