#include "channel_properties.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>

#include "base/checked.h"
#include "require.h"
#include "transmitters/transponder_pair.h"

namespace veloran::fuzz {

namespace {

bool isSame(Transmitter a, const Transmitter& b) {
    a.id = b.id;
    return a == b;
}

void requireSoundChannel(const Transmitter& channel) {
    require(fitsInt64(channel.centerFreqHz()), "a centre is a number for the radio");
    require(!channel.label().empty(), "a channel has a label");
    require(passbandForMode(channel.mode) > 0, "a mode has a passband");
    for (const char c : modeToHamlib(channel.mode)) {
        require(c >= 'A' && c <= 'Z', "a mode for the radio is one word");
    }
}

void requireSoundChoices(const std::vector<Transmitter>& channels) {
    const auto choices = buildTransmitterSelections(channels);
    std::map<UniqueId, int> uses;
    for (const auto& choice : choices) {
        require(!choice.id().empty() && !choice.label().empty(), "a choice has its texts");
        if (const auto* pair = choice.pair()) {
            require(pair->downlink.direction == "down" && pair->uplink.direction == "up",
                    "a pair has two directions");
            ++uses[pair->downlink.id];
            ++uses[pair->uplink.id];
        } else {
            ++uses[choice.single()->id];
        }
    }
    require(uses.size() == channels.size(), "every channel can be chosen");
    require(std::ranges::all_of(uses, [](const auto& use) { return use.second == 1; }),
            "no channel is offered twice");
    if (channels.empty()) return;
    const auto shown = shownSelectionId(choices, channels.front().centerFreqHz());
    require(std::ranges::any_of(choices, [&](const auto& c) { return c.id() == shown; }),
            "the choice shown is one of them");
}

}  // namespace

bool areSame(const std::vector<Transmitter>& a, const std::vector<Transmitter>& b) {
    return std::ranges::equal(a, b, isSame);
}

void requireSoundChannels(const std::vector<Transmitter>& channels) {
    require(channels.size() <= kMaxTransmitters, "a list of channels is not too long");
    for (const auto& channel : channels) requireSoundChannel(channel);
    const auto read = decodeTransmitters(encodeTransmitters(channels));
    require(read && areSame(*read, channels), "channels that are written read back the same");
    requireSoundChoices(channels);
}

}  // namespace veloran::fuzz
