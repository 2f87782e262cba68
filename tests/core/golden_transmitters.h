#pragma once

#include "support/vectors.h"
#include "transmitters/transmitter.h"

namespace veloran::test {

/// A channel as the golden files write it: every member present, null for an absent number.
inline Transmitter goldenTransmitter(const boost::json::value& value) {
    const auto& object = value.as_object();
    expectKnownMembers(
        object,
        {"freq", "freqLow", "freqHigh", "mode", "description", "direction", "inverting", "ctcss"},
        "channel");
    const auto optional = [&object](const char* key) {
        const auto& member = object.at(key);
        return member.is_null() ? std::nullopt : std::optional(number(member));
    };
    Transmitter result;
    result.freq = optional("freq");
    result.freqLow = optional("freqLow");
    result.freqHigh = optional("freqHigh");
    result.mode = std::string(object.at("mode").as_string());
    result.description = std::string(object.at("description").as_string());
    result.direction = std::string(object.at("direction").as_string());
    result.inverting = object.at("inverting").as_bool();
    result.ctcss = optional("ctcss");
    return result;
}

inline std::vector<Transmitter> goldenTransmitters(const boost::json::value& value) {
    std::vector<Transmitter> result;
    for (const auto& element : value.as_array()) result.push_back(goldenTransmitter(element));
    return result;
}

}  // namespace veloran::test
