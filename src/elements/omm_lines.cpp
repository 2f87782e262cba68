#include "elements/omm_lines.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "base/calendar.h"
#include "base/checked.h"
#include "base/text.h"

namespace veloran::omm_lines {

namespace {

constexpr std::int64_t kLargestCatalogueNumber = 99999;
constexpr std::size_t kLineWithoutChecksum = 68;
constexpr double kEccentricityScale = 10000000;

std::string catalogueField(std::int64_t noradId) {
    return fmt::format("{:05d}", std::min(noradId, kLargestCatalogueNumber));
}

std::string classificationField(std::string_view classification) {
    return classification.empty() ? "U" : std::string(characters(classification, 1).front());
}

/// So have the lines of nearly every satellite: no need to look for what belongs together.
bool hasOneByteCharacters(std::string_view text) {
    return std::ranges::all_of(
        text, [](char c) { return static_cast<unsigned char>(c) < 0x80 && c != '\r'; });
}

std::string withChecksum(std::string_view line) {
    const std::string columns = padOrTruncate(line, kLineWithoutChecksum);
    return fmt::format("{}{}", columns, checksum(columns));
}

/// The two pieces around the first `separator`.
std::optional<std::pair<std::string_view, std::string_view>> splitOnce(std::string_view text,
                                                                       char separator) {
    const auto at = text.find(separator);
    if (at == std::string_view::npos) return std::nullopt;
    return std::pair(text.substr(0, at), text.substr(at + 1));
}

/// The pieces around two separators; absent where there are fewer or more. What is no epoch may be
/// as long as an answer, so no list of all its pieces is made.
std::optional<std::array<std::string_view, 3>> splitInThree(std::string_view text, char separator) {
    const auto first = splitOnce(text, separator);
    if (!first) return std::nullopt;
    const auto second = splitOnce(first->second, separator);
    if (!second || splitOnce(second->second, separator)) return std::nullopt;
    return std::array{first->first, second->first, second->second};
}

/// Ordinal day of the year, from "2026-04-05".
std::optional<Epoch> parseDate(std::string_view text) {
    const auto pieces = splitInThree(text, '-');
    if (!pieces) return std::nullopt;
    const auto year = parseInt64((*pieces)[0]);
    const auto month = parseInt64((*pieces)[1]);
    const auto day = parseInt64((*pieces)[2]);
    if (!year || !month || !day) return std::nullopt;
    const auto midnight = instantFromDate(*year, *month, *day);
    if (!midnight) return std::nullopt;
    return Epoch{*year, static_cast<double>(dayOfYear(*midnight))};
}

/// Seconds since midnight, from "13:09:00.000288".
std::optional<double> parseTimeOfDay(std::string_view text) {
    const auto pieces = splitInThree(text, ':');
    if (!pieces) return std::nullopt;
    const auto hour = parseInt64((*pieces)[0]);
    const auto minute = parseInt64((*pieces)[1]);
    const auto seconds = parseDouble((*pieces)[2]);
    if (!hour || !minute || !seconds) return std::nullopt;
    return static_cast<double>(*hour) * 3600 + static_cast<double>(*minute) * 60 + *seconds;
}

}  // namespace

std::optional<Epoch> parseEpoch(std::string_view text) {
    const auto pieces = splitOnce(text, 'T');
    if (!pieces) return std::nullopt;
    const auto date = parseDate(pieces->first);
    const auto time = parseTimeOfDay(pieces->second);
    if (!date || !time) return std::nullopt;
    return Epoch{date->year, date->days + *time / 86400};
}

std::string synthesizeLine1(const Line1& fields) {
    const std::string epoch =
        fmt::format("{:02d}{:012.8f}", fields.epoch.year % 100, fields.epoch.days);
    return withChecksum(fmt::format(
        "1 {}{} {} {} {} {} {} {} {:4d}", catalogueField(fields.noradId),
        classificationField(fields.classification), formatIntlDesignator(fields.intlDesignator),
        epoch, formatSignedDecimal(fields.meanMotionDot),
        formatExponentNotation(fields.meanMotionDdot), formatExponentNotation(fields.bstar),
        fields.ephemerisType, fields.elementSetNo));
}

std::string synthesizeLine2(const Line2& fields) {
    const std::int64_t eccentricity =
        checkedInt64(std::round(fields.eccentricity * kEccentricityScale));
    return withChecksum(fmt::format("2 {} {:8.4f} {:8.4f} {:07d} {:8.4f} {:8.4f} {:11.8f}{:5d}",
                                    catalogueField(fields.noradId), fields.inclination, fields.raan,
                                    eccentricity, fields.argPerigee, fields.meanAnomaly,
                                    fields.meanMotion, fields.revNumber));
}

bool fitsEccentricity(double eccentricity) {
    return std::abs(eccentricity * kEccentricityScale) < 0x1p63;
}

std::string formatIntlDesignator(std::string_view objectId) {
    constexpr std::size_t kWidth = 8;
    const auto pieces = splitOnce(objectId, '-');
    const auto year = pieces ? parseInt64(pieces->first) : std::nullopt;
    if (!year) return padOrTruncate(objectId, kWidth);
    return padOrTruncate(fmt::format("{:02d}{}", *year % 100, pieces->second), kWidth);
}

std::string formatSignedDecimal(double value) {
    std::string digits = fmt::format("{:.8f}", std::abs(value));
    if (digits.starts_with("0.")) digits.erase(0, 1);
    return (value < 0 ? "-" : " ") + digits;
}

std::string formatExponentNotation(double value) {
    if (value == 0) return " 00000-0";
    if (!std::isfinite(value)) stopProgram("a number without end has no exponent notation");
    double mantissa = std::abs(value);
    int exponent = 0;
    for (; mantissa >= 1; ++exponent) mantissa /= 10;
    for (; mantissa < 0.1; --exponent) mantissa *= 10;
    const std::int64_t digits = checkedInt64(std::round(mantissa * 100000));
    return fmt::format("{}{:05d}{}{}", value < 0 ? "-" : " ", digits, exponent < 0 ? "-" : "+",
                       std::abs(exponent));
}

std::string padOrTruncate(std::string_view text, std::size_t width) {
    if (hasOneByteCharacters(text)) {
        std::string result(text.substr(0, width));
        result.resize(width, ' ');
        return result;
    }
    const auto kept = characters(text, width);
    std::string result;
    if (!kept.empty()) result.assign(kept.front().data(), kept.back().data() + kept.back().size());
    result.append(width - kept.size(), ' ');
    return result;
}

int checksum(std::string_view text) {
    int sum = 0;
    if (hasOneByteCharacters(text)) {
        for (const char c : text) sum += c == '-' ? 1 : c >= '0' && c <= '9' ? c - '0' : 0;
        return sum % 10;
    }
    for (const auto character : characters(text)) {
        if (character == "-") sum += 1;
        if (character.size() == 1 && character[0] >= '0' && character[0] <= '9') {
            sum += character[0] - '0';
        }
    }
    return sum % 10;
}

}  // namespace veloran::omm_lines
