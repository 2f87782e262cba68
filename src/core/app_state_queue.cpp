// The queue of marked passes: the clock starts and ends their sessions.

#include <algorithm>
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
    return queuedPassId(satellite, pass).has_value();
}

std::optional<std::string> AppState::queuedPassId(const Satellite& satellite,
                                                  const PredictedPass& pass) const {
    return queuedIdOf(queueBody(satellite), queuedPassIds, pass);
}

void AppState::togglePassQueued(const SatellitePtr& satellite, const PredictedPass& shown) {
    const QueueBody body = queueBody(*satellite);
    auto ids = queuedPassIds.get();
    if (const auto id = queuedIdOf(body, ids, shown)) {
        ids.erase(*id);
        queuedPassIds = std::move(ids);
        stopQueueTimerIfEmpty();
        return;
    }
    const PredictedPass& pass = presentPass(body, shown);
    if (auto existing = findConflict(queueBodies(selectedSatellites()), ids, pass)) {
        pendingPassConflict =
            PassConflict{std::move(*existing), makePassRef(satellite->id, satellite->name, pass)};
        return;
    }
    ids.insert(passQueueId(satellite->id, pass.riseTime));
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

/// The body of the present catalogue in place of one from before a reload, once its passes are
/// there.
const Satellite& AppState::presentBody(const Satellite& body) const {
    const auto found = std::ranges::find(satellites.get(), body.id, &Satellite::id);
    return found != satellites->end() && !(*found)->passes->empty() ? **found : body;
}

/// Absent for a session without a body, which is left alone.
std::optional<QueueView> AppState::queueView() const {
    const auto& tracked = trackingSatellite.get();
    if (isTracking && !tracked) return std::nullopt;
    return QueueView{queueBodies(selectedSatellites()),
                     isTracking ? std::optional(queueBody(presentBody(*tracked))) : std::nullopt,
                     queuedPassIds.get(), minAutoTrackElevation, followedPass_};
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
    followedPass_ = decision.followed;
    if (decision.stop) stopTracking();
    if (!decision.start) return;
    const auto& satellite = selected[decision.start->body];
    const auto& passes = *view->selected[decision.start->body].passes;
    selectedPass = PassInfo{UniqueId::make(), satellite, passes[decision.start->pass],
                            preferredTransmitter(*satellite)};
    startTracking(satellite, preferredTransmitter(*satellite));
    followedPass_ = decision.followed;
}

/// A new list gives passes other identifiers: what stands for one goes along.
void AppState::carryQueueOver(const Satellite& body, const PassList& former) {
    const auto& pending = pendingPassConflict.get();
    QueueIds asked;
    if (pending) {
        asked = queuedPassIds;
        asked.insert({pending->existing.id, pending->incoming.id});
    }
    const auto found = foundAgain(pending ? asked : queuedPassIds.get(), queueBody(body), former);
    auto conflict = pending;
    for (const auto& [id, present] : found) {
        if (followedPass_ && followedPass_->id == id) followedPass_ = present;
        if (conflict && conflict->existing.id == id) conflict->existing = present;
        if (conflict && conflict->incoming.id == id) conflict->incoming = present;
    }
    const auto isRenamed = [](const FoundEntry& entry) { return entry.id != entry.present.id; };
    if (std::ranges::any_of(found, isRenamed)) {
        QueueIds ids = queuedPassIds;
        for (const auto& [id, present] : found) {
            if (ids.erase(id) > 0) ids.insert(present.id);
        }
        if (ids != queuedPassIds.get()) queuedPassIds = std::move(ids);
    }
    if (conflict != pending) pendingPassConflict = std::move(conflict);
}

}  // namespace veloran
