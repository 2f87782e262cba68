// An answer of the transmitter service.

#include <cstddef>

#include "channel_properties.h"
#include "checks.h"
#include "require.h"
#include "transmitters/satnogs.h"

namespace veloran::fuzz {

namespace {

void requireSoundConversion(const SatNOGSTransmitter& record) {
    const auto made = convertTransmitterEntry(record);
    const auto edges =
        std::size_t{record.downlink_low.has_value()} + std::size_t{record.uplink_low.has_value()};
    require(made.size() == edges, "a record has a channel for each low edge");
    for (const auto& channel : made) {
        require(channel.freq.has_value() != (channel.freqLow && channel.freqHigh),
                "a channel is a spot or a range");
    }
    require(made.size() != 2 || (made[0].direction == "down" && made[1].direction == "up"),
            "the downlink comes first");
}

}  // namespace

void checkServiceAnswer(std::string_view bytes) {
    const auto records = decodeServiceAnswer(bytes);
    const auto channels = channelsOfAnswer(bytes);
    const auto byNumber = channelsByNumber(bytes);
    if (!records) {
        require(channels.empty() && byNumber.empty(), "what does not decode has no channels");
        return;
    }
    std::size_t live = 0, numbered = 0, found = 0;
    for (const auto& record : *records) {
        requireSoundConversion(record);
        if (!record.alive) continue;
        const auto made = convertTransmitterEntry(record).size();
        live += made;
        if (record.norad_cat_id) numbered += made;
    }
    require(channels.size() == (live > kMaxTransmitters ? 0 : live), "live records count");
    requireSoundChannels(channels);
    for (const auto& [id, list] : byNumber) {
        requireSoundChannels(list);
        found += list.size();
    }
    require(found == numbered || numbered > kMaxTransmitters, "numbered records are all there");
}

}  // namespace veloran::fuzz
