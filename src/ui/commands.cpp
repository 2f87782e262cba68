#include "ui/commands.h"

namespace veloran {

void startTrackingSelectedPass(AppState& state) {
    const auto& pass = state.selectedPass.get();
    if (pass) state.startTracking(pass->satellite, state.selectedTransmitter);
}

void refreshPasses(AppState& state) {
    state.timelineStartTime = state.now();
    state.computeAllPasses();
}

}  // namespace veloran
