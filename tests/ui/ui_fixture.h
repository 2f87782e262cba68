#pragma once

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <QWidget>
#include <cmath>
#include <memory>
#include <numbers>

#include "core/app_state.h"
#include "support/simulated_machine.h"
#include "ui/patience.h"
#include "ui/state_refresher.h"
#include "ui/widgets/value_label.h"

namespace veloran::test {

/// A pass from the east over the south to the west, in `points` samples.
inline PredictedPass passAt(Instant rise, double seconds = 600, double maxElevation = 45,
                            int points = 21) {
    PredictedPass pass{.riseTime = rise,
                       .peakTime = rise + seconds / 2,
                       .setTime = rise + seconds,
                       .maxElevation = maxElevation,
                       .riseAzimuth = 90,
                       .setAzimuth = 270,
                       .peakAzimuth = 180,
                       .duration = seconds,
                       .trackPoints = {}};
    for (int i = 0; i < points; ++i) {
        const double part = points > 1 ? i / (points - 1.0) : 0;
        pass.trackPoints.push_back({rise + part * seconds, 90 + 180 * part,
                                    maxElevation * std::sin(std::numbers::pi * part), 1000, 0});
    }
    return pass;
}

inline Transmitter channel(const std::string& direction, double hz, const std::string& mode = "FM",
                           bool inverting = false) {
    Transmitter t;
    t.freq = hz;
    t.mode = mode;
    t.direction = direction;
    t.description = "Voice";
    t.inverting = inverting;
    return t;
}

/// The real state on a simulated machine.
class UiFixture : public ::testing::Test {
  protected:
    SatellitePtr addSatellite(const std::string& name, std::int64_t id, PassList passes,
                              std::vector<Transmitter> transmitters = {}) {
        auto satellite = std::make_shared<Satellite>(name, id, std::move(transmitters));
        satellite->isSelected = true;
        satellite->passes = std::make_shared<const PassList>(std::move(passes));
        auto all = state->satellites.get();
        all.push_back(satellite);
        state->satellites = all;
        return satellite;
    }

    void select(const SatellitePtr& satellite, const std::optional<Transmitter>& transmitter) {
        state->selectedPass = PassInfo{
            .satellite = satellite, .pass = satellite->passes->front(), .transmitter = transmitter};
        state->selectTransmitter(transmitter, satellite);
    }

    static QString textOf(const QWidget& view, const char* name) {
        const auto* label = view.findChild<ValueLabel*>(name);
        EXPECT_NE(label, nullptr) << name;
        return label ? label->text() : QString();
    }

    template <class T>
    static T& child(const QWidget& view, const char* name) {
        auto* found = view.findChild<T*>(name);
        if (!found) throw std::runtime_error(std::string("no child named ") + name);
        return *found;
    }

    static bool isShown(const QWidget& view, const char* name) {
        return child<QWidget>(view, name).isVisibleTo(&view);
    }

    /// Makes a change and waits for the refresh that follows it.
    template <class Action>
    void refreshedAfter(const QWidget& window, Action action) {
        auto* refresher = window.findChild<StateRefresher*>();
        ASSERT_NE(refresher, nullptr);
        QSignalSpy refreshed(refresher, &StateRefresher::refresh);
        action();
        QTest::qWait(0);
        // The rest of the frame since the refresh before.
        if (refreshed.isEmpty()) machine.loop.advance(StateRefresher::kFrameSeconds);
        ASSERT_FALSE(refreshed.isEmpty());
    }

    SimulatedMachine machine;
    std::shared_ptr<AppState> state = AppState::create(machine.machine);
    const Instant start = machine.loop.now();
};

}  // namespace veloran::test
