#include <fmt/format.h>

#include <boost/json/serialize.hpp>
#include <utility>

#include "base/json.h"
#include "transmitters/json_fields.h"
#include "transmitters/transmitter.h"

// Channels to and from JSON: the database file and the transmitter cache.

namespace veloran {
namespace {

namespace json = boost::json;

std::optional<Transmitter> decodeTransmitter(const json::value& value) {
    const auto* object = value.if_object();
    if (!object) return std::nullopt;
    JsonFields fields(*object);
    Transmitter channel;
    channel.freq = fields.hertz("freq");
    channel.freqLow = fields.hertz("freq_low");
    channel.freqHigh = fields.hertz("freq_high");
    channel.mode = fields.requiredText("mode");
    channel.description = fields.requiredText("description");
    channel.direction = fields.requiredText("direction");
    channel.inverting = fields.flagOrFalse("inverting");
    channel.ctcss = fields.number("ctcss");
    return fields.isGood() ? std::optional(std::move(channel)) : std::nullopt;
}

std::optional<std::vector<Transmitter>> decodeList(const json::value* value) {
    if (!value || !value->is_array()) return std::nullopt;
    const auto& array = value->get_array();
    if (array.size() > kMaxTransmitters) return std::nullopt;
    std::vector<Transmitter> channels;
    channels.reserve(array.size());
    for (const auto& element : array) {
        auto channel = decodeTransmitter(element);
        if (!channel) return std::nullopt;
        channels.push_back(std::move(*channel));
    }
    return channels;
}

/// Adds one satellite of a database to the map. False when its entry is bad.
bool decodeSatellite(const json::value& value, TransmitterMap& map) {
    const auto* object = value.if_object();
    if (!object) return false;
    JsonFields fields(*object);
    fields.requiredText("name");
    const auto noradId = fields.requiredInteger("norad_id");
    auto channels = decodeList(object->if_contains("transmitters"));
    if (!fields.isGood() || !channels) return false;
    map.insert_or_assign(noradId, std::move(*channels));
    return true;
}

/// One JSON object, its members in the order they were added.
class ObjectText {
  public:
    void add(std::string_view key, std::string_view value) {
        text_ += fmt::format("{}\"{}\":{}", text_.empty() ? "{" : ",", key, value);
    }
    void addNumber(std::string_view key, std::optional<double> value) {
        if (value) add(key, fmt::format("{}", *value));  // the shortest form that reads back
    }
    void addText(std::string_view key, std::string_view value) {
        add(key, json::serialize(json::string_view(value)));
    }
    std::string finish() && { return std::move(text_) + "}"; }

  private:
    std::string text_;
};

std::string encodeTransmitter(const Transmitter& channel) {
    ObjectText object;
    object.addNumber("freq", channel.freq);
    object.addNumber("freq_low", channel.freqLow);
    object.addNumber("freq_high", channel.freqHigh);
    object.addText("mode", channel.mode);
    object.addText("description", channel.description);
    object.addText("direction", channel.direction);
    object.add("inverting", channel.inverting ? "true" : "false");
    object.addNumber("ctcss", channel.ctcss);
    return std::move(object).finish();
}

}  // namespace

std::optional<TransmitterMap> decodeTransmitterDatabase(std::string_view text) {
    const auto value = parseJson(text);
    const auto* object = value ? value->if_object() : nullptr;
    const auto* satellites = object ? object->if_contains("satellites") : nullptr;
    if (!satellites || !satellites->is_array()) return std::nullopt;
    TransmitterMap map;
    for (const auto& satellite : satellites->get_array()) {
        if (!decodeSatellite(satellite, map)) return std::nullopt;
    }
    return map;
}

std::optional<std::vector<Transmitter>> decodeTransmitters(std::string_view text) {
    const auto value = parseJson(text);
    return decodeList(value ? &*value : nullptr);
}

std::string encodeTransmitters(const std::vector<Transmitter>& transmitters) {
    std::string text;
    for (const auto& channel : transmitters) {
        text += (text.empty() ? "[" : ",") + encodeTransmitter(channel);
    }
    return (text.empty() ? "[" : text) + "]";
}

}  // namespace veloran
