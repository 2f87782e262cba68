#pragma once

#include <optional>

#include "core/app_state.h"

namespace veloran {

/// The body that the sky plot follows: that of the selected pass, else the tracked one, else none.
SatellitePtr plottedSatellite(const AppState& state);

/// Its look angles `offset` seconds after `now`, by the state's look-angle cache: cheap enough for
/// every frame.
std::optional<TopocentricResult> liveAzEl(AppState& state, Instant now, double offset = 0);

}  // namespace veloran
