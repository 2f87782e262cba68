// The database of channels that may come with the program.

#include <fmt/format.h>

#include <string>

#include "channel_properties.h"
#include "checks.h"
#include "require.h"

namespace veloran::fuzz {

void checkTransmitterFile(std::string_view bytes) {
    const auto database = decodeTransmitterDatabase(bytes);
    if (!database) return;
    std::string satellites;
    for (const auto& [id, channels] : *database) {
        requireSoundChannels(channels);
        satellites += fmt::format(R"({}{{"name":"","norad_id":{},"transmitters":{}}})",
                                  satellites.empty() ? "" : ",", id, encodeTransmitters(channels));
    }
    const auto again = decodeTransmitterDatabase(R"({"satellites":[)" + satellites + "]}");
    require(again && again->size() == database->size(), "a database that is written reads");
    for (const auto& [id, channels] : *database) {
        const auto found = again->find(id);
        require(found != again->end() && areSame(found->second, channels),
                "a database reads back the same");
    }
}

}  // namespace veloran::fuzz
