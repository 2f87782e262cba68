// Start-up and reloads: element sets in, one sorted list of bodies out.

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "core/app_state.h"
#include "core/default_satellites.h"
#include "core/status_texts.h"
#include "elements/element_merge.h"

namespace veloran {

namespace {

constexpr double kPassUpdateSeconds = 300;

SatellitePtr makeSatellite(TLEData tle) {
    auto satellite = std::make_shared<Satellite>(tle.name, tle.noradId);
    satellite->sources = splitSources(tle.source);
    satellite->tle = std::move(tle);
    satellite->initOrbit();
    return satellite;
}

/// The new bodies know the passes of those whose places they take.
void inheritPasses(const std::vector<SatellitePtr>& before,
                   const std::vector<SatellitePtr>& bodies) {
    std::unordered_map<std::int64_t, const Satellite*> earlier;
    for (const auto& body : before) {
        if (body->formerPasses()) earlier.emplace(body->id, body.get());
    }
    for (const auto& body : bodies) {
        const auto found = earlier.find(body->id);
        if (found != earlier.end()) body->inheritPasses(*found->second);
    }
}

double oldestAge(const TLEManager& manager, const std::vector<std::string>& keys) {
    const double age = manager.oldestCacheAge(keys);
    // A time stamp file that claims the beginning of time says as little as none.
    constexpr double kOldestClaim = 1e12;
    return age > kOldestClaim ? TLEManager::kUnknownAge : age;
}

}  // namespace

void AppState::loadData() {
    announceLoad();
    beginLoad();
}

void AppState::announceLoad() {
    isLoadingTLEs = true;
    statusMessage = std::string(kStatusFetching);
}

void AppState::beginLoad() {
    // Channels first, so that all are there before a satellite is built.
    loadTransmitterDB(weakly(&AppState::fetchElements));
}

void AppState::fetchElements() {
    const auto& groups = subscribedCategories.get();
    elements_.fetchCategories({groups.begin(), groups.end()}, weakly(&AppState::buildSatellites));
}

/// Bodies nobody else has seen yet may be made on any thread; a large catalogue takes a while.
void AppState::buildSatellites(std::vector<TLEData> elements) {
    const auto& groups = subscribedCategories.get();
    machine_.workers.run([weak = weak_from_this(), &loop = machine_.loop, manager = elements_,
                          keys = std::vector<std::string>(groups.begin(), groups.end()),
                          shared = std::make_shared<std::vector<TLEData>>(std::move(elements))] {
        std::vector<SatellitePtr> bodies;
        bodies.reserve(shared->size());
        for (auto& tle : *shared) bodies.push_back(makeSatellite(std::move(tle)));
        loop.post([weak, bodies = std::move(bodies), age = oldestAge(manager, keys)]() mutable {
            if (const auto self = weak.lock()) self->showSatellites(std::move(bodies), age);
        });
    });
}

void AppState::showSatellites(std::vector<SatellitePtr> bodies, double oldestElements) {
    for (const auto& satellite : bodies) {
        if (const auto known = transmitterDB_.find(satellite->id); known != transmitterDB_.end()) {
            satellite->transmitters = known->second;
        }
        satellite->isSelected = selectedSatelliteIds->contains(satellite->id);
    }
    for (auto& body : celestialBodies()) bodies.push_back(std::move(body));
    std::stable_sort(bodies.begin(), bodies.end(),
                     [](const auto& a, const auto& b) { return a->name < b->name; });
    inheritPasses(satellites, bodies);
    satellites = std::move(bodies);
    ++catalogues_;

    if (selectedSatelliteIds->empty()) selectDefaults();
    isLoadingTLEs = false;
    tleAge = oldestElements;
    statusMessage = statusLoaded(satellites->size(), tleAge);
    computeAllPasses();
    startPassUpdateTimer();
    refreshTransmittersFromSatNOGS();
}

/// The stamps go on a worker, where a slow disk holds nobody up; the load begins behind that.
void AppState::refreshTLEs() {
    announceLoad();
    const auto& groups = subscribedCategories.get();
    machine_.workers.run([manager = elements_, load = weakly(&AppState::beginLoad),
                          &loop = machine_.loop,
                          keys = std::vector<std::string>(groups.begin(), groups.end())]() mutable {
        for (const auto& key : keys) manager.forgetTimestamp(key);
        loop.post(load);
    });
}

std::vector<SatellitePtr> AppState::celestialBodies() const {
    const auto body = [this](const char* name, std::int64_t id, BodyKind kind) {
        auto satellite = std::make_shared<Satellite>(name, id);
        satellite->bodyKind = kind;
        satellite->sources = {"celestial"};
        satellite->isSelected = selectedSatelliteIds->contains(id);
        return satellite;
    };
    return {body("Sun", -1, BodyKind::sun), body("Moon", -2, BodyKind::moon)};
}

void AppState::selectDefaults() {
    // One assignment for all: each one stores the whole set.
    auto ids = selectedSatelliteIds.get();
    for (const auto& satellite : satellites.get()) {
        if (!matchesDefault(satellite->name)) continue;
        satellite->isSelected = true;
        ids.insert(satellite->id);
    }
    if (ids != selectedSatelliteIds.get()) selectedSatelliteIds = std::move(ids);
}

std::string AppState::tleAgeString() const {
    return tleAgeText(tleAge);
}

void AppState::startPassUpdateTimer() {
    passUpdateTimer_ = machine_.loop.every(kPassUpdateSeconds, weakly(&AppState::computeAllPasses));
}

}  // namespace veloran
