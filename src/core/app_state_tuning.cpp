// The operator's offsets. They act at the next tick; only the calibration can be saved.

#include "core/app_state.h"

namespace veloran {

void AppState::bumpSatCalibration(double deltaHz) {
    currentSatCalibration = currentSatCalibration + deltaHz;
}

void AppState::saveSatCalibration() {
    const auto& satellite = trackingSatellite.get();
    const auto& channel = selectedTransmitter.get();
    if (!satellite || !channel) return;
    calibrations_.setTransponderOffset(satellite->id, channel->centerFreqHz(),
                                       currentSatCalibration);
}

void AppState::clearCalibration() {
    const auto& satellite = trackingSatellite.get();
    const auto& channel = selectedTransmitter.get();
    if (!satellite || !channel) return;
    calibrations_.clearTransponderOffset(satellite->id, channel->centerFreqHz());
    currentSatCalibration = 0;
}

void AppState::bumpRIT(double deltaHz) {
    currentRIT = currentRIT + deltaHz;
}

void AppState::clearRIT() {
    currentRIT = 0;
}

void AppState::bumpPassbandOffset(double deltaHz) {
    currentPassbandOffset = currentPassbandOffset + deltaHz;
}

void AppState::clearPassbandOffset() {
    currentPassbandOffset = 0;
}

}  // namespace veloran
