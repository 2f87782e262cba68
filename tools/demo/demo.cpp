#include "demo/demo.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "demo/process_figures.h"
#include "transmitters/transponder_pair.h"

namespace veloran {
namespace {

constexpr double kLookSeconds = 0.1;
constexpr double kSoonSeconds = 3 * 3600;
constexpr double kGoodElevation = 10;  // degrees

std::optional<Transmitter> transponderDownlink(const Satellite& satellite) {
    for (const auto& choice : buildTransmitterSelections(satellite.transmitters)) {
        if (choice.pair()) return choice.downlink();
    }
    return {};
}

/// Passes that have not begun, of satellites that can be heard, by their rise.
std::vector<std::pair<SatellitePtr, PredictedPass>> comingPasses(const AppState& state) {
    auto passes = state.allPassesSorted();
    std::erase_if(passes, [now = state.now()](const auto& entry) {
        return entry.second.riseTime <= now || !entry.first->primaryDownlink();
    });
    return passes;
}

}  // namespace

std::optional<PassInfo> passToShow(const AppState& state) {
    const Instant now = state.now();
    // The least of these that any pass has: how much there is to see, soon.
    enum class Rank { transponderUnderWay, underWay, transponderSoon, toCome, none };
    const auto rank = [now](const PredictedPass& pass, bool hasTransponder) {
        if (pass.riseTime <= now) {
            return hasTransponder ? Rank::transponderUnderWay : Rank::underWay;
        }
        const bool soon = pass.riseTime - now <= kSoonSeconds;
        return hasTransponder && soon && pass.maxElevation >= kGoodElevation ? Rank::transponderSoon
                                                                             : Rank::toCome;
    };

    Rank bestRank = Rank::none;
    std::optional<PassInfo> best;
    for (const auto& [satellite, pass] : state.allPassesSorted()) {
        if (pass.setTime <= now || !satellite->primaryDownlink()) continue;
        const auto transponder = transponderDownlink(*satellite);
        const Rank found = rank(pass, transponder.has_value());
        if (found >= bestRank) continue;
        bestRank = found;
        best = PassInfo{
            .satellite = satellite,
            .pass = pass,
            .transmitter = transponder ? transponder : state.preferredTransmitter(*satellite)};
    }
    return best;
}

Demo::Demo(std::shared_ptr<AppState> state, const DemoOptions& options)
    : state_(std::move(state)),
      show_(options.show),
      satellites_(options.satellites),
      search_(options.search),
      restSeconds_(options.searchEvery.value_or(0)) {}

void Demo::start(MainLoop& loop) {
    timer_ = loop.every(kLookSeconds, [this] { look(); });
}

void Demo::look() {
    switch (step_) {
        case Step::loading:
            if (state_->isLoadingTLEs || state_->satellites->empty()) return;
            selectMore();
            step_ = Step::computing;
            return;
        case Step::computing:
            if (!allPassesKnown()) return;
            showPass();
            if (show_ >= DemoShow::tracking) markPasses();
            step_ = Step::searching;
            turned_ = SteadyClock::now();
            if (!search_) timer_.reset();
            if (onReady) onReady();
            return;
        case Step::searching: {
            if (state_->passProgress->has_value()) return;
            if (isSearching_) endSearch();
            const std::chrono::duration<double> rest = SteadyClock::now() - turned_;
            if (rest.count() >= restSeconds_) beginSearch();
            return;
        }
    }
}

void Demo::beginSearch() {
    isSearching_ = true;
    turned_ = SteadyClock::now();
    processorAtBegin_ = workerSeconds();
    state_->computeAllPasses();
}

void Demo::endSearch() {
    isSearching_ = false;
    const auto now = SteadyClock::now();
    const std::chrono::duration<double> wall = now - std::exchange(turned_, now);
    searches_.push_back({wall.count(), workerSeconds() - processorAtBegin_});
}

void Demo::selectMore() {
    auto ids = state_->selectedSatelliteIds.get();
    for (const auto& satellite : state_->satellites.get()) {
        const auto& sources = satellite->sources;
        if (!sources.contains("weather") && !sources.contains("celestial")) continue;
        satellite->isSelected = true;
        ids.insert(satellite->id);
    }
    for (const auto& satellite : state_->satellites.get()) {
        if (ids.size() >= satellites_) break;
        satellite->isSelected = true;
        ids.insert(satellite->id);
    }
    state_->selectedSatelliteIds = std::move(ids);
    state_->computeAllPasses();
}

bool Demo::allPassesKnown() const {
    // An earlier computation, without the added satellites, may finish first.
    const auto selected = state_->selectedSatellites();
    std::uint64_t latest = 0;
    for (const auto& satellite : selected) latest = std::max(latest, satellite->passRun);
    return latest > 0 && std::ranges::all_of(selected, [latest](const auto& satellite) {
               const bool hasOrbit = satellite->bodyKind != BodyKind::sgp4 || satellite->satrec;
               return !hasOrbit || satellite->passRun == latest;
           });
}

void Demo::showPass() {
    picked_ = passToShow(*state_);
    if (!picked_ || show_ == DemoShow::nothing) return;
    state_->selectedPass = picked_;
    state_->selectTransmitter(picked_->transmitter, picked_->satellite);
    if (show_ >= DemoShow::tracking)
        state_->startTracking(picked_->satellite, picked_->transmitter);
}

/// The first pass to come that overlaps its successor gives way to it; behind comes one more.
void Demo::markPasses() {
    const auto passes = comingPasses(*state_);
    const auto clash = std::ranges::adjacent_find(
        passes, [](const auto& a, const auto& b) { return passesOverlap(a.second, b.second); });
    if (clash == passes.end()) return;
    const auto& dropped = *clash;
    const auto& kept = *std::next(clash);
    state_->togglePassQueued(dropped.first, dropped.second);
    state_->togglePassQueued(kept.first, kept.second);
    if (show_ == DemoShow::conflict) return;
    if (const auto conflict = state_->pendingPassConflict.get()) {
        state_->resolveConflictReplace(*conflict);
        ++resolvedConflicts_;
    }
    const auto later = std::ranges::find_if(passes, [&kept](const auto& entry) {
        return entry.second.riseTime >= kept.second.setTime;
    });
    if (later != passes.end()) state_->togglePassQueued(later->first, later->second);
}

}  // namespace veloran
