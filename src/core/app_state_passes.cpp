// The passes of the next day for what is selected, and the look angles between them.

#include <algorithm>
#include <iterator>
#include <utility>

#include "core/app_state.h"
#include "core/search_order.h"
#include "core/status_texts.h"

namespace veloran {

namespace {

constexpr double kHoursAhead = 24;
constexpr double kHourSeconds = 3600;
constexpr double kLowestPeakDegrees = 2;  // what is listed; the queue has its own threshold
constexpr double kStepSeconds = 30;
constexpr std::size_t kManyBodies = 200;  // a search of fewer is over before one has read of it

bool hasOrbit(const Satellite& body) {
    return body.bodyKind != BodyKind::sgp4 || body.satrec;
}

std::optional<Instant> firstRise(const PassList& passes, Instant now) {
    const auto first =
        std::ranges::find_if(passes, [now](const auto& pass) { return pass.setTime > now; });
    return first == passes.end() ? std::nullopt : std::optional(first->riseTime);
}

/// The bodies with an orbit, as indices, in the order in which they are searched.
std::vector<std::size_t> searchOrderOf(const std::vector<SatellitePtr>& selected,
                                       const AppState& state) {
    const std::set<std::int64_t> queued = passQueueNumbers(state.queuedPassIds);
    const auto& shown = state.selectedPass.get();
    const auto& tracked = state.trackingSatellite.get();
    const Instant now = state.now();
    std::vector<SearchBody> bodies;
    bodies.reserve(selected.size());
    for (const auto& body : selected) {
        bodies.push_back({.isTracked = tracked && tracked->id == body->id,
                          .isShown = shown && shown->noradId() == body->id,
                          .isQueued = queued.contains(body->id),
                          .isNew = body->passRun == 0,
                          .firstRise = firstRise(*body->passes, now)});
    }
    auto order = searchOrder(bodies);
    std::erase_if(order, [&selected](std::size_t i) { return !hasOrbit(*selected[i]); });
    return order;
}

}  // namespace

/// One computation, from the selection of its start to the last list. Main thread only: the workers
/// just carry it. Runs neither know nor await each other; of a body's lists that of the later run
/// stands, whichever comes in last.
struct AppState::PassRun {
    std::uint64_t number = 0;
    std::uint64_t catalogue = 0;  ///< which of the catalogues `selected` is from
    PassSearch search;
    std::vector<SatellitePtr> selected;
    std::size_t unfinished = 0;
    std::size_t orbits = 0;
};

void AppState::computeAllPasses() {
    auto run = std::make_shared<PassRun>();
    run->number = ++passRuns_;
    run->catalogue = catalogues_;
    const Instant start = now();
    run->search = {start, start + kHoursAhead * kHourSeconds, obsLatitude, obsLongitude,
                   obsAltitude};
    run->selected = selectedSatellites();
    const auto order = searchOrderOf(run->selected, *this);
    run->unfinished = run->orbits = order.size();
    statusMessage = statusComputing(run->selected.size());
    showProgress(*run);

    if (run->unfinished == 0) {
        machine_.loop.post([weak = weak_from_this(), run] {
            if (const auto self = weak.lock()) self->finishPasses(*run);
        });
        return;
    }
    // One task for each body, so that every processor core is used. A task gets values only (time,
    // observer and the shared constant orbit) and gives back a whole list.
    for (const std::size_t i : order) {
        machine_.workers.run(
            [weak = weak_from_this(), &loop = machine_.loop, run, i, start,
             predictor = makePassPredictor(*run->selected[i], obsLatitude, obsLongitude,
                                           obsAltitude)]() mutable {
                if (weak.expired()) return;
                auto passes =
                    predictor.findPasses(start, kHoursAhead, kLowestPeakDegrees, kStepSeconds);
                // Moved, so that the bodies of the run are let go on the main thread.
                loop.post([weak, run = std::move(run), i, passes = std::move(passes)]() mutable {
                    if (const auto self = weak.lock()) {
                        self->storePasses(*run, i, std::move(passes));
                    }
                });
            },
            WorkerPool::Priority::computation);
    }
}

void AppState::storePasses(PassRun& run, std::size_t index, PassList found) {
    auto& body = *run.selected[index];
    if (run.number > body.passRun) {
        body.passRun = run.number;
        replacePasses(body, std::move(found), run);
    }
    --run.unfinished;
    showProgress(run);
    if (run.unfinished == 0) finishPasses(run);
}

void AppState::replacePasses(Satellite& body, PassList found, const PassRun& run) {
    const auto former = body.formerPasses();
    if (former) found = renewedPasses(std::move(found), run.search, *former);
    body.passes = std::make_shared<const PassList>(std::move(found));
    body.passSearch = run.search;
    body.inherited.reset();
    // The queue goes by the bodies of the present catalogue.
    if (former && run.catalogue == catalogues_) carryQueueOver(body, *former->list);
}

void AppState::showProgress(const PassRun& run) {
    if (run.number != passRuns_) return;
    std::optional<double> share;
    if (run.orbits >= kManyBodies && run.unfinished > 0) {
        const std::size_t percent = 100 * (run.orbits - run.unfinished) / run.orbits;
        share = static_cast<double>(percent) / 100;
    }
    if (share != passProgress.get()) passProgress = share;
}

void AppState::finishPasses(const PassRun& run) {
    objectWillChange.send();
    std::size_t count = 0;
    for (const auto& satellite : run.selected) count += satellite->passes->size();
    statusMessage = statusOfPasses(count);
}

std::optional<TopocentricResult> AppState::cachedObserve(const Satellite& sat, Instant baseTime,
                                                         double offset) {
    return liveGeoCache_.lookUp(sat.id, baseTime, offset, [&](Instant at) {
        return sat.observe(at, obsLatitude, obsLongitude, obsAltitude);
    });
}

std::vector<SatellitePtr> AppState::selectedSatellites() const {
    std::vector<SatellitePtr> selected;
    std::copy_if(satellites->begin(), satellites->end(), std::back_inserter(selected),
                 [](const auto& satellite) { return satellite->isSelected.get(); });
    return selected;
}

std::vector<std::pair<SatellitePtr, PredictedPass>> AppState::allPassesSorted() const {
    std::vector<std::pair<SatellitePtr, PredictedPass>> all;
    for (const auto& satellite : selectedSatellites()) {
        for (const auto& pass : *satellite->passes) all.emplace_back(satellite, pass);
    }
    std::stable_sort(all.begin(), all.end(), [](const auto& a, const auto& b) {
        return a.second.riseTime < b.second.riseTime;
    });
    return all;
}

void AppState::toggleSatellite(const SatellitePtr& satellite) {
    toggleSatellites({satellite});
}

void AppState::toggleSatellites(const std::vector<SatellitePtr>& list) {
    if (list.empty()) return;
    auto ids = selectedSatelliteIds.get();
    for (const auto& satellite : list) {
        satellite->isSelected = !satellite->isSelected.get();
        if (satellite->isSelected) {
            ids.insert(satellite->id);
        } else {
            ids.erase(satellite->id);
        }
    }
    selectedSatelliteIds = std::move(ids);
    objectWillChange.send();
    computeAllPasses();
    fetchNewTransmitters(list);
}

}  // namespace veloran
