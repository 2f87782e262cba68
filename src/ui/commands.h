#pragma once

#include "core/app_state.h"

namespace veloran {

// What menus and buttons share.

/// TRACK and its menu entry: the selected pass with the channel chosen for it.
void startTrackingSelectedPass(AppState& state);

/// Starts the timeline at the present and searches the passes anew; downloads nothing.
void refreshPasses(AppState& state);

}  // namespace veloran
