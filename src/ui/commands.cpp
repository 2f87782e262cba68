#include "ui/commands.h"

#include "ui/timeline/timeline_gestures.h"

namespace veloran {

void startTrackingSelectedPass(AppState& state) {
    const auto& pass = state.selectedPass.get();
    if (pass) state.startTracking(pass->satellite, state.selectedTransmitter);
}

void refreshPasses(AppState& state) {
    state.timelineStartTime = state.now();
    state.computeAllPasses();
}

void zoomIn(AppState& state) {
    state.timelineHoursVisible = zoomIn(state.timelineHoursVisible.get());
}

void zoomOut(AppState& state) {
    state.timelineHoursVisible = zoomOut(state.timelineHoursVisible.get());
}

void scrollToNow(AppState& state) {
    state.timelineStartTime = startAroundNow(state.now(), state.timelineHoursVisible);
}

void selectPass(AppState& state, SatellitePtr satellite, const PredictedPass& pass) {
    const auto transmitter = state.preferredTransmitter(*satellite);
    state.selectedPass = PassInfo{.satellite = satellite, .pass = pass, .transmitter = transmitter};
    state.selectTransmitter(transmitter, satellite);
}

void subscribe(AppState& state, const std::string& key, bool on) {
    auto keys = state.subscribedCategories.get();
    if (on) {
        keys.insert(key);
    } else {
        keys.erase(key);
    }
    state.subscribedCategories = std::move(keys);
    state.loadData();
}

void deselectAll(AppState& state) {
    state.toggleSatellites(state.selectedSatellites());
    // What is left belongs to bodies that no group has any more, or not yet.
    if (!state.selectedSatelliteIds->empty()) state.selectedSatelliteIds = std::set<std::int64_t>{};
}

}  // namespace veloran
