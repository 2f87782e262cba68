#include "qt/settings_file.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <cmath>
#include <utility>
#include <variant>
#include <vector>

#include "base/json.h"
#include "base/text.h"

namespace veloran {

namespace {

namespace json = boost::json;

std::string_view view(const json::string& text) {
    return {text.data(), text.size()};
}
std::string_view view(json::string_view text) {
    return {text.data(), text.size()};
}

// --- from the file

std::optional<SettingValue> readList(const json::array& list) {
    const auto isText = [](const json::value& element) { return element.is_string(); };
    const auto isInteger = [](const json::value& element) { return element.is_int64(); };
    if (std::ranges::all_of(list, isText)) {
        std::vector<std::string> texts;
        std::size_t bytes = 0;
        for (const auto& element : list) {
            bytes += element.get_string().size();
            if (bytes > kLargestSetting) return std::nullopt;
            texts.emplace_back(view(element.get_string()));
        }
        return texts;
    }
    if (!std::ranges::all_of(list, isInteger)) return std::nullopt;
    if (list.size() * sizeof(std::int64_t) > kLargestSetting) return std::nullopt;
    std::vector<std::int64_t> integers;
    for (const auto& element : list) integers.push_back(element.get_int64());
    return integers;
}

std::optional<SettingValue> readValue(const json::value& stored) {
    if (stored.is_bool()) return stored.get_bool();
    if (stored.is_int64()) return stored.get_int64();
    if (stored.is_double() && std::isfinite(stored.get_double())) return stored.get_double();
    if (stored.is_string() && stored.get_string().size() <= kLargestSetting) {
        return std::string(view(stored.get_string()));
    }
    if (stored.is_array()) return readList(stored.get_array());
    return std::nullopt;
}

// --- to the file

struct Writer {
    using Result = std::optional<json::value>;

    Result operator()(bool flag) const { return flag; }
    Result operator()(std::int64_t integer) const { return integer; }
    Result operator()(double number) const {
        return std::isfinite(number) ? Result(number) : std::nullopt;
    }
    Result operator()(const std::string& text) const {
        const bool fits = text.size() <= kLargestSetting && isValidUtf8(text);
        return fits ? Result(json::string(text)) : std::nullopt;
    }
    template <class Element>
    Result operator()(const std::vector<Element>& elements) const {
        json::array list;
        for (const auto& element : elements) {
            auto written = (*this)(element);
            if (!written) return std::nullopt;
            list.push_back(std::move(*written));
        }
        return readList(list) ? Result(std::move(list)) : std::nullopt;
    }
};

/// A number that was too large for a double reads as infinity, and has to do so again: JSON has no
/// word for it, and one that is none would make the whole file unreadable.
std::string numberText(double number) {
    if (std::isfinite(number)) return shortestText(number);
    return number < 0 ? "-1e999" : "1e999";
}

std::string valueText(const json::value& value);

std::string listText(const json::array& list) {
    std::string text;
    for (const auto& element : list) text += (text.empty() ? "" : ",") + valueText(element);
    return "[" + text + "]";
}

std::string objectText(const json::object& object) {
    std::string text;
    for (const auto& [key, value] : object) {
        text += (text.empty() ? "" : ",") + json::serialize(key) + ":" + valueText(value);
    }
    return "{" + text + "}";
}

std::string valueText(const json::value& value) {
    if (const auto* number = value.if_double()) return numberText(*number);
    if (const auto* list = value.if_array()) return listText(*list);
    if (const auto* object = value.if_object()) return objectText(*object);
    return json::serialize(value);
}

}  // namespace

std::optional<json::object> parseSettings(std::string_view text) {
    // The user's own file, with a key for each satellite and transponder ever worked.
    constexpr std::size_t kMostKeys = 100'000;
    auto parsed = parseJson(text, kMostKeys);
    if (!parsed || !parsed->is_object()) return std::nullopt;
    return std::move(parsed->get_object());
}

SettingValues readableSettings(const json::object& stored) {
    SettingValues values;
    for (const auto& [key, value] : stored) {
        if (auto readable = readValue(value)) values.emplace(view(key), std::move(*readable));
    }
    return values;
}

void applyChanges(const SettingChanges& changes, json::object& stored) {
    for (const auto& [key, value] : changes) {
        if (!isValidUtf8(key)) continue;
        auto written = value ? std::visit(Writer{}, *value) : std::nullopt;
        if (written) {
            stored[key] = std::move(*written);
        } else {
            stored.erase(key);
        }
    }
}

std::string settingsText(const json::object& stored) {
    std::map<std::string_view, const json::value*> sorted;
    for (const auto& [key, value] : stored) sorted.emplace(view(key), &value);
    std::string text = "{";
    const char* separator = "\n";
    for (const auto& [key, value] : sorted) {
        text += separator;
        text += "  " + json::serialize(json::string(key)) + ": " + valueText(*value);
        separator = ",\n";
    }
    return text + "\n}\n";
}

}  // namespace veloran
