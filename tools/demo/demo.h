#pragma once

#include <memory>
#include <optional>

#include "core/app_state.h"

namespace veloran {

/// The hand that works the program in the demo: it waits for the satellites, adds the weather
/// satellites to the selection, and tracks the pass under way or else the next one.
class Demo {
  public:
    explicit Demo(std::shared_ptr<AppState> state);

    void start(MainLoop& loop);

    /// Has been found and is tracked; absent until then.
    const std::optional<PassInfo>& pickedPass() const { return picked_; }

  private:
    enum class Step { loading, computing, tracking };

    void look();
    void selectWeatherSatellites();
    bool allPassesKnown() const;
    void trackBestPass();

    std::shared_ptr<AppState> state_;
    Step step_ = Step::loading;
    std::optional<PassInfo> picked_;
    std::unique_ptr<Timer> timer_;
};

/// The pass to show and the channel to work in it: the first under way of a satellite with a
/// transponder, so that the uplink is tuned as well; else the first under way or to come of a
/// satellite with a downlink.
std::optional<PassInfo> passToShow(const AppState& state);

}  // namespace veloran
