#include "ui/sky_plot/live_look.h"

namespace veloran {

SatellitePtr plottedSatellite(const AppState& state) {
    const auto& pass = state.selectedPass.get();
    return pass ? pass->satellite : state.trackingSatellite.get();
}

std::optional<TopocentricResult> liveAzEl(AppState& state, Instant now, double offset) {
    const SatellitePtr satellite = plottedSatellite(state);
    if (!satellite) return std::nullopt;
    return state.cachedObserve(*satellite, now, offset);
}

}  // namespace veloran
