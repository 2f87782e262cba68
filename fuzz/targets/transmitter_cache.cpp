// The cache of one satellite's channels: a time stamp up to the first line feed, the cached
// channels up to the first zero byte, then what the service answers.

#include <string>

#include "channel_properties.h"
#include "checks.h"
#include "require.h"
#include "support/simulated_machine.h"
#include "transmitters/satnogs_cache.h"

namespace veloran::fuzz {

namespace {

constexpr std::int64_t kNumber = 25544;

std::string cutAt(std::string_view& rest, char end) {
    const auto at = rest.find(end);
    const std::string piece(rest.substr(0, at));
    rest.remove_prefix(at == std::string_view::npos ? rest.size() : at + 1);
    return piece;
}

}  // namespace

void checkTransmitterCache(std::string_view bytes) {
    test::SimulatedMachine world;
    const SatNOGSFetch fetch(world.machine, "https://service.test");
    SatNOGSCache cache(world.machine, fetch);
    world.files.files[cache.timestampFile(kNumber)] = cutAt(bytes, '\n');
    world.files.files[cache.cacheFile(kNumber)] = cutAt(bytes, '\0');
    const std::string url = fetch.baseURL() + "?format=json&satellite__norad_cat_id=25544";
    world.http.answers[url].body = std::string(bytes);

    const auto cached = cache.loadCached(kNumber);
    if (cached) requireSoundChannels(*cached);
    const bool usesCache = cached && !cache.isCacheStale(kNumber);
    const auto answered = channelsOfAnswer(bytes);

    int answers = 0;
    std::vector<Transmitter> got;
    cache.fetchWithCache(kNumber, [&](std::vector<Transmitter> channels) {
        ++answers;
        got = std::move(channels);
    });
    world.loop.runPosted();
    require(answers == 1, "a request is answered once");
    require(world.http.requests.size() == (usesCache ? 0u : 1u), "a fresh cache asks nobody");
    if (usesCache || answered.empty()) {
        require(areSame(got, cached.value_or(std::vector<Transmitter>{})), "the cache serves");
    } else {
        require(areSame(got, answered), "the service serves");
        const auto kept = cache.loadCached(kNumber);
        require(kept && areSame(*kept, answered), "an answer is kept");
        require(!cache.isCacheStale(kNumber), "what is kept is fresh");
    }
}

}  // namespace veloran::fuzz
