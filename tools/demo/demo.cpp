#include "demo/demo.h"

#include <algorithm>
#include <utility>

#include "core/status_texts.h"
#include "transmitters/transponder_pair.h"

namespace veloran {
namespace {

constexpr double kLookSeconds = 0.1;

std::optional<Transmitter> transponderDownlink(const Satellite& satellite) {
    for (const auto& choice : buildTransmitterSelections(satellite.transmitters)) {
        if (choice.pair()) return choice.downlink();
    }
    return {};
}

}  // namespace

std::optional<PassInfo> passToShow(const AppState& state) {
    std::optional<PassInfo> best;
    for (const auto& [satellite, pass] : state.allPassesSorted()) {
        if (pass.setTime <= state.now() || !satellite->primaryDownlink()) continue;
        if (best && pass.riseTime > state.now()) break;
        const auto transponder = transponderDownlink(*satellite);
        if (best && !transponder) continue;
        best = PassInfo{
            .satellite = satellite,
            .pass = pass,
            .transmitter = transponder ? transponder : state.preferredTransmitter(*satellite)};
        if (transponder) break;
    }
    return best;
}

Demo::Demo(std::shared_ptr<AppState> state) : state_(std::move(state)) {}

void Demo::start(MainLoop& loop) {
    timer_ = loop.every(kLookSeconds, [this] { look(); });
}

void Demo::look() {
    switch (step_) {
        case Step::loading:
            if (state_->isLoadingTLEs || state_->satellites->empty()) return;
            selectWeatherSatellites();
            step_ = Step::computing;
            return;
        case Step::computing:
            if (!allPassesKnown()) return;
            trackBestPass();
            step_ = Step::tracking;
            return;
        case Step::tracking:
            return;
    }
}

void Demo::selectWeatherSatellites() {
    auto ids = state_->selectedSatelliteIds.get();
    for (const auto& satellite : state_->satellites.get()) {
        if (!satellite->sources.contains("weather")) continue;
        satellite->isSelected = true;
        ids.insert(satellite->id);
    }
    state_->selectedSatelliteIds = std::move(ids);
    state_->computeAllPasses();
}

bool Demo::allPassesKnown() const {
    return state_->statusMessage.get() == statusPasses(state_->allPassesSorted().size());
}

void Demo::trackBestPass() {
    picked_ = passToShow(*state_);
    if (!picked_) return;
    state_->selectedPass = picked_;
    state_->selectTransmitter(picked_->transmitter, picked_->satellite);
    state_->startTracking(picked_->satellite, picked_->transmitter);
}

}  // namespace veloran
