#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "support/vectors.h"
#include "transmitters/transmitter.h"

namespace veloran::test {

// Channels as golden files write them.

inline boost::json::value numberOrNull(std::optional<double> value) {
    return value ? boost::json::value(*value) : boost::json::value(nullptr);
}

inline boost::json::object channelJson(const Transmitter& channel) {
    return {{"freq", numberOrNull(channel.freq)},
            {"freqLow", numberOrNull(channel.freqLow)},
            {"freqHigh", numberOrNull(channel.freqHigh)},
            {"mode", channel.mode},
            {"description", channel.description},
            {"direction", channel.direction},
            {"inverting", channel.inverting},
            {"ctcss", numberOrNull(channel.ctcss)}};
}

inline boost::json::array channelsJson(const std::vector<Transmitter>& channels) {
    boost::json::array array;
    for (const auto& channel : channels) array.emplace_back(channelJson(channel));
    return array;
}

inline Transmitter channelFrom(const boost::json::object& object) {
    expectKnownMembers(
        object,
        {"freq", "freqLow", "freqHigh", "mode", "description", "direction", "inverting", "ctcss"},
        "channel");
    const auto numberAt = [&](std::string_view key) {
        const auto& value = object.at(key);
        return value.is_null() ? std::nullopt : std::optional(number(value));
    };
    Transmitter channel;
    channel.freq = numberAt("freq");
    channel.freqLow = numberAt("freqLow");
    channel.freqHigh = numberAt("freqHigh");
    channel.mode = object.at("mode").as_string();
    channel.description = object.at("description").as_string();
    channel.direction = object.at("direction").as_string();
    channel.inverting = object.at("inverting").as_bool();
    channel.ctcss = numberAt("ctcss");
    return channel;
}

inline std::vector<Transmitter> channelsFrom(const boost::json::value& list) {
    std::vector<Transmitter> channels;
    for (const auto& element : list.as_array())
        channels.push_back(channelFrom(element.as_object()));
    return channels;
}

/// Place of a channel in the list it came from, known by its identity; null for none.
inline boost::json::value indexIn(const std::vector<Transmitter>& list,
                                  const std::optional<Transmitter>& channel) {
    for (std::size_t i = 0; channel && i < list.size(); ++i) {
        if (list[i].id == channel->id) return i;
    }
    return nullptr;
}

}  // namespace veloran::test
