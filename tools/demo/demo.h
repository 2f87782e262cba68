#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>

#include "core/app_state.h"
#include "demo/demo_options.h"

namespace veloran {

/// The hand that works the program in the demo: it waits for the satellites, adds the weather
/// satellites, the Sun and the Moon to the selection, tracks the pass under way or else the next
/// one, and marks two passes to come, one of them in place of another that overlaps it; then it
/// rests, or goes on searching passes. Asked to show less, it stops on the way.
class Demo {
  public:
    Demo(std::shared_ptr<AppState> state, const DemoOptions& options);

    void start(MainLoop& loop);

    /// Called when the window shows what it shall.
    std::function<void()> onReady;

    /// The pass to show; absent until it is found.
    const std::optional<PassInfo>& pickedPass() const { return picked_; }

    std::size_t resolvedConflicts() const { return resolvedConflicts_; }

  private:
    enum class Step { loading, computing, searching };

    void look();
    void selectMore();
    bool allPassesKnown() const;
    void showPass();
    void markPasses();

    std::shared_ptr<AppState> state_;
    DemoShow show_;
    std::size_t satellites_;
    bool search_;
    Step step_ = Step::loading;
    std::optional<PassInfo> picked_;
    std::size_t resolvedConflicts_ = 0;
    std::unique_ptr<Timer> timer_;
};

/// The pass to show and the channel to work in it, of a satellite with a downlink: the first under
/// way, with a transponder if there is one, so that the uplink is tuned as well; else the first of
/// the next three hours with a transponder and at least ten degrees; else the first to come.
std::optional<PassInfo> passToShow(const AppState& state);

}  // namespace veloran
