#include "elements/omm_lines.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/calendar.h"
#include "base/checked.h"
#include "base/text.h"
#include "elements/line_columns.h"

namespace veloran::omm_lines {

namespace {

constexpr std::int64_t kLargestCatalogueNumber = 99999;
constexpr std::size_t kLineWithoutChecksum = 68;
constexpr double kEccentricityScale = 10000000;

void appendCatalogueNumber(LineColumns& columns, std::int64_t noradId) {
    columns.integer(std::min(noradId, kLargestCatalogueNumber), 5, '0');
}

void appendClassification(LineColumns& columns, std::string_view classification) {
    columns.text(classification.empty() ? "U" : characters(classification, 1).front());
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

/// "1998-067A" as "98067A  ".
void appendIntlDesignator(LineColumns& columns, std::string_view objectId) {
    constexpr std::size_t kWidth = 8;
    const std::size_t start = columns.size();
    const auto pieces = splitOnce(objectId, '-');
    const auto year = pieces ? parseInt64(pieces->first) : std::nullopt;
    if (year) columns.integer(*year % 100, 2, '0');
    columns.text(year ? pieces->second : objectId);
    columns.fit(start, kWidth);
}

void appendSignedDecimal(LineColumns& columns, double value) {
    LineColumns magnitude;
    magnitude.fixed(std::abs(value), 10, 8, ' ');
    auto digits = magnitude.view();
    if (digits.starts_with("0.")) digits.remove_prefix(1);
    columns.character(value < 0 ? '-' : ' ');
    columns.text(digits);
}

void appendExponentNotation(LineColumns& columns, double value) {
    if (value == 0) return columns.text(" 00000-0");
    if (!std::isfinite(value)) stopProgram("a number without end has no exponent notation");
    double mantissa = std::abs(value);
    int exponent = 0;
    for (; mantissa >= 1; ++exponent) mantissa /= 10;
    for (; mantissa < 0.1; --exponent) mantissa *= 10;
    columns.character(value < 0 ? '-' : ' ');
    columns.integer(checkedInt64(std::round(mantissa * 100000)), 5, '0');
    columns.character(exponent < 0 ? '-' : '+');
    columns.integer(std::abs(exponent), 1, ' ');
}

std::string withChecksum(LineColumns& columns) {
    columns.fit(0, kLineWithoutChecksum);
    columns.integer(checksum(columns.view()), 1, ' ');
    return std::string(columns.view());
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
    LineColumns columns;
    columns.text("1 ");
    appendCatalogueNumber(columns, fields.noradId);
    appendClassification(columns, fields.classification);
    columns.character(' ');
    appendIntlDesignator(columns, fields.intlDesignator);
    columns.character(' ');
    columns.integer(fields.epoch.year % 100, 2, '0');
    columns.fixed(fields.epoch.days, 12, 8, '0');
    columns.character(' ');
    appendSignedDecimal(columns, fields.meanMotionDot);
    columns.character(' ');
    appendExponentNotation(columns, fields.meanMotionDdot);
    columns.character(' ');
    appendExponentNotation(columns, fields.bstar);
    columns.character(' ');
    columns.integer(fields.ephemerisType, 1, ' ');
    columns.character(' ');
    columns.integer(fields.elementSetNo, 4, ' ');
    return withChecksum(columns);
}

std::string synthesizeLine2(const Line2& fields) {
    LineColumns columns;
    columns.text("2 ");
    appendCatalogueNumber(columns, fields.noradId);
    for (const double degrees : {fields.inclination, fields.raan}) {
        columns.character(' ');
        columns.fixed(degrees, 8, 4, ' ');
    }
    columns.character(' ');
    columns.integer(checkedInt64(std::round(fields.eccentricity * kEccentricityScale)), 7, '0');
    for (const double degrees : {fields.argPerigee, fields.meanAnomaly}) {
        columns.character(' ');
        columns.fixed(degrees, 8, 4, ' ');
    }
    columns.character(' ');
    columns.fixed(fields.meanMotion, 11, 8, ' ');
    columns.integer(fields.revNumber, 5, ' ');
    return withChecksum(columns);
}

bool fitsEccentricity(double eccentricity) {
    return std::abs(eccentricity * kEccentricityScale) < 0x1p63;
}

std::string formatIntlDesignator(std::string_view objectId) {
    LineColumns columns;
    appendIntlDesignator(columns, objectId);
    return std::string(columns.view());
}

std::string formatSignedDecimal(double value) {
    LineColumns columns;
    appendSignedDecimal(columns, value);
    return std::string(columns.view());
}

std::string formatExponentNotation(double value) {
    LineColumns columns;
    appendExponentNotation(columns, value);
    return std::string(columns.view());
}

std::string padOrTruncate(std::string_view text, std::size_t width) {
    LineColumns columns;
    columns.text(text);
    columns.fit(0, width);
    return std::string(columns.view());
}

int checksum(std::string_view text) {
    int sum = 0;
    if (hasOneByteCharacters(text)) {
        for (const char c : text) {
            const int digit = c - '0';
            sum += (digit >= 0 && digit <= 9 ? digit : 0) + (c == '-' ? 1 : 0);
        }
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
