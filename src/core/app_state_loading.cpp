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
    if (!isLoadingTLEs) announceLoad();  // another one has ended meanwhile
    ++loads_;
    // Channels first, so that all are there before a satellite is built.
    loadTransmitterDB(inThisLoad(&AppState::fetchElements));
}

void AppState::fetchElements() {
    const auto& groups = subscribedCategories.get();
    elements_.fetchCategories({groups.begin(), groups.end()},
                              inThisLoad([](AppState& self, std::vector<TLEData> elements) {
                                  self.buildSatellites(std::move(elements),
                                                       &AppState::showSatellites);
                              }),
                              watchOfLoad());
}

FetchWatch AppState::watchOfLoad() {
    downloads = Downloads{downloads->outcomes, {}};
    FetchWatch watch;
    // A catalogue that is on the screen stays there until the new one is whole.
    if (satellites->empty()) {
        watch.cached = inThisLoad([](AppState& self, std::vector<TLEData> elements) {
            if (elements.empty()) return;
            self.buildSatellites(std::move(elements), &AppState::showCachedSatellites);
        });
    }
    watch.looked = inThisLoad([](AppState& self, const std::string& key, bool isAwaited,
                                 const std::optional<DownloadOutcome>& remembered) {
        auto known = self.downloads.get();
        known.noteCache(key, isAwaited, remembered);
        if (known != self.downloads.get()) self.downloads = std::move(known);
    });
    watch.downloaded =
        inThisLoad([](AppState& self, const std::string& key, const DownloadOutcome& outcome) {
            auto known = self.downloads.get();
            known.noteDownload(key, outcome);
            self.downloads = std::move(known);
        });
    return watch;
}

/// Bodies nobody else has seen yet may be made on any thread; a large catalogue takes a while.
void AppState::buildSatellites(std::vector<TLEData> elements, ShowSatellites show) {
    const auto& groups = subscribedCategories.get();
    machine_.workers.run([then = inThisLoad(show), &loop = machine_.loop, manager = elements_,
                          keys = std::vector<std::string>(groups.begin(), groups.end()),
                          shared = std::make_shared<std::vector<TLEData>>(std::move(elements))] {
        std::vector<SatellitePtr> bodies;
        bodies.reserve(shared->size());
        for (auto& tle : *shared) bodies.push_back(makeSatellite(std::move(tle)));
        loop.post([then, bodies = std::move(bodies), age = oldestAge(manager, keys)]() mutable {
            then(std::move(bodies), age);
        });
    });
}

void AppState::replaceSatellites(std::vector<SatellitePtr> bodies) {
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
}

/// What the caches held, until the downloads are done: with it one can work. Everything that is
/// done once in a load waits for the whole. Defaults above all: chosen from a part of the catalogue
/// they would be kept, and the rest never chosen.
void AppState::showCachedSatellites(std::vector<SatellitePtr> bodies, double oldestElements) {
    if (!satellites->empty()) return;  // the whole was quicker
    replaceSatellites(std::move(bodies));
    tleAge = oldestElements;
    showCachedTransmitters();
    if (!selectedSatellites().empty()) computeAllPasses();
}

void AppState::showSatellites(std::vector<SatellitePtr> bodies, double oldestElements) {
    replaceSatellites(std::move(bodies));

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

std::vector<DownloadOutcome> AppState::failedDownloads() const {
    const bool hasElements = std::ranges::any_of(
        satellites.get(), [](const auto& body) { return body->bodyKind == BodyKind::sgp4; });
    std::vector<DownloadOutcome> failed;
    if (hasElements || satellites->empty()) return failed;  // or nothing has been loaded yet
    for (const auto& key : subscribedCategories.get()) {
        const auto known = downloads->outcomes.find(key);
        if (known == downloads->outcomes.end() || known->second.hasElements()) continue;
        failed.push_back(known->second);
    }
    return failed;
}

std::string AppState::statusOfPasses(std::size_t count) const {
    const auto failed = failedDownloads();
    return failed.empty() ? statusPasses(count) : statusFailed(failed);
}

void AppState::startPassUpdateTimer() {
    passUpdateTimer_ = machine_.loop.every(kPassUpdateSeconds, weakly(&AppState::computeAllPasses));
}

}  // namespace veloran
