#include "elements/plain_omm.h"

#include <fmt/format.h>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <cctype>
#include <cmath>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

#include "base/json.h"
#include "base/text.h"
#include "elements/omm_lines.h"

namespace veloran::test {

namespace {

namespace json = boost::json;

/// Reads the members of one message; `isSound` tells of all that were asked for.
class Message {
  public:
    explicit Message(const json::object& object) : object_(object) {}

    bool isSound() const { return isSound_; }

    std::string text(std::string_view key, bool isRequired) {
        const auto* value = present(key, isRequired);
        if (!value) return {};
        if (value->is_string()) return std::string(value->get_string());
        return refused<std::string>();
    }
    double number(std::string_view key, bool isRequired) {
        const auto* value = present(key, isRequired);
        if (!value) return 0;
        const double number = value->is_number() ? value->to_number<double>() : HUGE_VAL;
        return std::isfinite(number) ? number : refused<double>();
    }
    std::int64_t whole(std::string_view key, bool isRequired) {
        const auto* value = present(key, isRequired);
        if (!value) return 0;
        if (value->is_int64()) return value->get_int64();
        const double number = value->is_double() ? value->get_double() : HUGE_VAL;
        if (std::abs(number) < 0x1p63 && number == std::trunc(number)) {
            return static_cast<std::int64_t>(number);
        }
        return refused<std::int64_t>();
    }

  private:
    const json::value* present(std::string_view key, bool isRequired) {
        const auto* value = object_.if_contains(key);
        if (value && (isRequired || !value->is_null())) return value;
        if (isRequired) isSound_ = false;
        return nullptr;
    }
    template <class T>
    T refused() {
        isSound_ = false;
        return {};
    }

    const json::object& object_;
    bool isSound_ = true;
};

std::string signedDecimal(double value) {
    const auto digits = fmt::format("{:.8f}", std::abs(value));
    return (value < 0 ? "-" : " ") + (digits.starts_with("0.") ? digits.substr(1) : digits);
}

std::string exponentNotation(double value) {
    if (value == 0) return " 00000-0";
    double mantissa = std::abs(value);
    int exponent = 0;
    for (; mantissa >= 1; ++exponent) mantissa /= 10;
    for (; mantissa < 0.1; --exponent) mantissa *= 10;
    return fmt::format("{}{:05.0f}{}{}", value < 0 ? "-" : " ", std::round(mantissa * 100000),
                       exponent < 0 ? "-" : "+", std::abs(exponent));
}

std::string padded(std::string_view text, std::size_t width) {
    const auto kept = characters(text, width);
    std::string result;
    for (const auto character : kept) result += character;
    return result + std::string(width - kept.size(), ' ');
}

std::string designator(const std::string& objectId) {
    const auto dash = objectId.find('-');
    const auto year = dash == std::string::npos
                          ? std::nullopt
                          : parseInt64(std::string_view(objectId).substr(0, dash));
    if (!year) return padded(objectId, 8);
    return padded(fmt::format("{:02d}{}", *year % 100, objectId.substr(dash + 1)), 8);
}

std::string withChecksum(const std::string& line) {
    const auto columns = padded(line, 68);
    int sum = 0;
    for (const auto character : characters(columns)) {
        if (character == "-") ++sum;
        if (character.size() == 1 && std::isdigit(static_cast<unsigned char>(character[0]))) {
            sum += character[0] - '0';
        }
    }
    return columns + std::to_string(sum % 10);
}

std::string catalogueNumber(std::int64_t number) {
    return fmt::format("{:05d}", number > 99999 ? 99999 : number);
}

std::string line1(Message& message, const TLEData& set) {
    const auto classification = message.text("CLASSIFICATION_TYPE", false);
    const auto shown = classification.empty() ? "U" : padded(classification, 1);
    return withChecksum(fmt::format(
        "1 {}{} {} {:02d}{:012.8f} {} {} {} {} {:4d}", catalogueNumber(set.noradId), shown,
        designator(message.text("OBJECT_ID", false)), set.epochYear % 100, set.epochDays,
        signedDecimal(message.number("MEAN_MOTION_DOT", false)),
        exponentNotation(message.number("MEAN_MOTION_DDOT", false)), exponentNotation(set.bstar),
        message.whole("EPHEMERIS_TYPE", false), message.whole("ELEMENT_SET_NO", false)));
}

std::string line2(const TLEData& set) {
    return withChecksum(fmt::format(
        "2 {} {:8.4f} {:8.4f} {:07d} {:8.4f} {:8.4f} {:11.8f}{:5d}", catalogueNumber(set.noradId),
        set.inclination, set.raan, static_cast<std::int64_t>(std::round(set.eccentricity * 1e7)),
        set.argPerigee, set.meanAnomaly, set.meanMotion, set.revNumber));
}

/// The set of one message; without an epoch it is left out of the answer.
struct Decoded {
    TLEData set;
    bool hasEpoch = false;
};

std::optional<Decoded> decode(const json::value& value) {
    if (!value.is_object()) return std::nullopt;
    Message message(value.get_object());
    TLEData set;
    set.name = message.text("OBJECT_NAME", true);
    set.noradId = message.whole("NORAD_CAT_ID", true);
    const auto epoch = omm_lines::parseEpoch(message.text("EPOCH", true));
    set.meanMotion = message.number("MEAN_MOTION", true);
    set.eccentricity = message.number("ECCENTRICITY", true);
    set.inclination = message.number("INCLINATION", true);
    set.raan = message.number("RA_OF_ASC_NODE", true);
    set.argPerigee = message.number("ARG_OF_PERICENTER", true);
    set.meanAnomaly = message.number("MEAN_ANOMALY", true);
    set.bstar = message.number("BSTAR", true);
    set.revNumber = message.whole("REV_AT_EPOCH", false);
    if (epoch) std::tie(set.epochYear, set.epochDays) = std::pair(epoch->year, epoch->days);
    set.line1 = line1(message, set);
    if (!message.isSound() || !(std::abs(set.eccentricity * 1e7) < 0x1p63)) return std::nullopt;
    set.line2 = line2(set);
    return Decoded{set, epoch && set.epochDate()};
}

}  // namespace

std::vector<TLEData> parsePlainly(std::string_view text) {
    const auto root = parseJson(text);
    if (!root || !root->is_array()) return {};
    std::vector<TLEData> sets;
    for (const auto& element : root->get_array()) {
        auto decoded = decode(element);
        if (!decoded) return {};
        if (decoded->hasEpoch) sets.push_back(std::move(decoded->set));
    }
    return sets;
}

}  // namespace veloran::test
