#pragma once

#include "core/app_state.h"

namespace veloran {

// What menus and buttons share.

/// TRACK and its menu entry: the selected pass with the channel chosen for it.
void startTrackingSelectedPass(AppState& state);

/// Starts the timeline at the present and searches the passes anew; downloads nothing.
void refreshPasses(AppState& state);

/// One hour less, or more, on the timeline: 2 to 48.
void zoomIn(AppState& state);
void zoomOut(AppState& state);
/// Moves the timeline so that a quarter of it lies in the past.
void scrollToNow(AppState& state);

/// Makes this the selected pass, on the channel last worked on that satellite; starts nothing.
void selectPass(AppState& state, SatellitePtr satellite, const PredictedPass& pass);

/// Puts the key into the subscribed groups, or takes it out, and loads the data anew.
void subscribe(AppState& state, const std::string& key, bool on);

/// Takes every body out of the favourites, and those that the catalogue does not have.
void deselectAll(AppState& state);

}  // namespace veloran
