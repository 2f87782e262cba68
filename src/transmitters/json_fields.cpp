#include "transmitters/json_fields.h"

#include <boost/json/value.hpp>
#include <cmath>

#include "base/checked.h"

namespace veloran {
namespace {

std::optional<double> finiteNumber(const boost::json::value& value) {
    boost::system::error_code error;
    const double number = value.to_number<double>(error);
    return error || !std::isfinite(number) ? std::nullopt : std::optional(number);
}

std::optional<std::int64_t> wholeNumber(const boost::json::value& value) {
    // Exact for integers, and for doubles without a fraction.
    boost::system::error_code error;
    const auto number = value.to_number<std::int64_t>(error);
    return error ? std::nullopt : std::optional(number);
}

}  // namespace

const boost::json::value* JsonFields::find(std::string_view key) const {
    const auto* value = object_.if_contains(key);
    return value && !value->is_null() ? value : nullptr;
}

std::string JsonFields::requiredText(std::string_view key) {
    const auto* value = find(key);
    const auto* text = value ? value->if_string() : nullptr;
    isGood_ = isGood_ && text;
    return text ? std::string(*text) : std::string();
}

std::int64_t JsonFields::requiredInteger(std::string_view key) {
    const auto* value = find(key);
    const auto found = value ? wholeNumber(*value) : std::nullopt;
    isGood_ = isGood_ && found;
    return found.value_or(0);
}

std::optional<double> JsonFields::number(std::string_view key) {
    const auto* value = find(key);
    if (!value) return std::nullopt;
    const auto found = finiteNumber(*value);
    isGood_ = isGood_ && found.has_value();
    return found;
}

std::optional<double> JsonFields::hertz(std::string_view key) {
    const auto found = number(key);
    isGood_ = isGood_ && (!found || fitsInt64(*found));
    return found;
}

std::optional<std::string> JsonFields::text(std::string_view key) {
    const auto* value = find(key);
    if (!value) return std::nullopt;
    const auto* text = value->if_string();
    isGood_ = isGood_ && text;
    return text ? std::optional<std::string>(std::string_view(*text)) : std::nullopt;
}

std::optional<bool> JsonFields::flag(std::string_view key) {
    const auto* value = find(key);
    if (!value) return std::nullopt;
    isGood_ = isGood_ && value->is_bool();
    return value->is_bool() ? std::optional(value->get_bool()) : std::nullopt;
}

std::optional<std::int64_t> JsonFields::integer(std::string_view key) {
    const auto* value = find(key);
    if (!value) return std::nullopt;
    const auto found = wholeNumber(*value);
    isGood_ = isGood_ && found;
    return found;
}

bool JsonFields::flagOrFalse(std::string_view key) const {
    const auto* value = object_.if_contains(key);
    return value && value->is_bool() && value->get_bool();
}

}  // namespace veloran
