// The queue of marked passes: the clock starts and ends their sessions.

#include <utility>

#include "core/app_state.h"

namespace veloran {

namespace {

QueueBody queueBody(const Satellite& satellite) {
    return {satellite.id, satellite.name, satellite.passes};
}

std::vector<QueueBody> queueBodies(const std::vector<SatellitePtr>& satellites) {
    std::vector<QueueBody> bodies;
    bodies.reserve(satellites.size());
    for (const auto& satellite : satellites) bodies.push_back(queueBody(*satellite));
    return bodies;
}

}  // namespace

bool AppState::isPassQueued(const Satellite& satellite, const PredictedPass& pass) const {
    return queuedPassIds->contains(passQueueId(satellite.id, pass.riseTime));
}

void AppState::togglePassQueued(const SatellitePtr& satellite, const PredictedPass& pass) {
    const auto id = passQueueId(satellite->id, pass.riseTime);
    auto ids = queuedPassIds.get();
    if (ids.erase(id) > 0) {
        queuedPassIds = std::move(ids);
        stopQueueTimerIfEmpty();
        return;
    }
    if (auto existing = findConflict(queueBodies(selectedSatellites()), ids, pass)) {
        pendingPassConflict =
            PassConflict{std::move(*existing), makePassRef(satellite->id, satellite->name, pass)};
        return;
    }
    ids.insert(id);
    queuedPassIds = std::move(ids);
    startQueueTimerIfNeeded();
}

void AppState::resolveConflictReplace(const PassConflict& conflict) {
    auto ids = queuedPassIds.get();
    ids.erase(conflict.existing.id);
    ids.insert(conflict.incoming.id);
    queuedPassIds = std::move(ids);
    pendingPassConflict = std::nullopt;  // `conflict` may be this very value
    startQueueTimerIfNeeded();
}

void AppState::resolveConflictKeepExisting() {
    pendingPassConflict = std::nullopt;
}

void AppState::clearPassQueue() {
    queuedPassIds = QueueIds{};
    stopQueueTimerIfEmpty();
}

void AppState::startQueueTimerIfNeeded() {
    if (passQueueTimer_) return;
    passQueueTimer_ = machine_.loop.every(kQueueSeconds, weakly(&AppState::processPassQueue));
    processPassQueue();
}

void AppState::stopQueueTimerIfEmpty() {
    if (queuedPassIds->empty()) passQueueTimer_.reset();
}

/// Absent for a session without a body, which is left alone.
std::optional<QueueView> AppState::queueView() const {
    const auto& tracked = trackingSatellite.get();
    if (isTracking && !tracked) return std::nullopt;
    return QueueView{queueBodies(selectedSatellites()),
                     isTracking ? std::optional(queueBody(*tracked)) : std::nullopt,
                     queuedPassIds.get(), minAutoTrackElevation};
}

std::vector<QueueEntry> AppState::queueEntries() const {
    const auto view = queueView();
    return view ? describeQueue(*view, now()) : std::vector<QueueEntry>{};
}

void AppState::processPassQueue() {
    const auto view = queueView();
    if (!view) return;
    const auto decision = decideQueue(*view, now());
    const auto selected = selectedSatellites();
    if (decision.stop) stopTracking();
    if (!decision.start) return;
    const auto& satellite = selected[decision.start->body];
    const auto& passes = *view->selected[decision.start->body].passes;
    selectedPass = PassInfo{UniqueId::make(), satellite, passes[decision.start->pass],
                            preferredTransmitter(*satellite)};
    startTracking(satellite, preferredTransmitter(*satellite));
}

}  // namespace veloran
