#include "core/unattended.h"

#include <utility>

namespace veloran {

Duty dutyOf(const AppState& state) {
    const auto& satellite = state.trackingSatellite.get();
    const auto tracked =
        state.isTracking && satellite ? std::optional(satellite->name) : std::nullopt;
    // Most of the time there is no queue, and many satellites to look through for one.
    if (state.queuedPassIds->empty()) return dutyOf(tracked, {}, state.now());
    return dutyOf(tracked, state.queueEntries(), state.now());
}

void goOnAfterSleep(AppState& state) {
    if (state.rigClient()) state.rigClient()->checkConnection();
    if (state.isTracking) state.updateTracking();
    if (!state.satellites->empty()) state.computeAllPasses();
}

void stopForGood(AppState& state) {
    auto ids = state.queuedPassIds.get();
    for (const auto& entry : state.queueEntries()) {
        if (entry.state == QueueEntryState::tracked) ids.erase(entry.id);
    }
    state.stopTracking();
    if (ids == state.queuedPassIds.get()) return;
    if (ids.empty()) return state.clearPassQueue();
    state.queuedPassIds = std::move(ids);
}

}  // namespace veloran
