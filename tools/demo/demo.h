#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "core/app_state.h"
#include "demo/demo_options.h"

namespace veloran {

/// The hand that works the program in the demo: it waits for the satellites, adds the weather
/// satellites, the Sun and the Moon to the selection, tracks the pass under way or else the next
/// one, and marks two passes to come, one of them in place of another that overlaps it; then it
/// rests, or goes on searching passes. Asked to show less, it stops on the way.
class Demo {
  public:
    /// A search of the passes of all that is selected, amid the running window.
    struct Search {
        double wallSeconds = 0;       // to a tenth
        double processorSeconds = 0;  // of all threads but the main one
    };

    Demo(std::shared_ptr<AppState> state, const DemoOptions& options);

    void start(MainLoop& loop);

    /// Called when the window shows what it shall.
    std::function<void()> onReady;

    /// The pass to show; absent until it is found.
    const std::optional<PassInfo>& pickedPass() const { return picked_; }

    std::size_t resolvedConflicts() const { return resolvedConflicts_; }

    /// Those that have ended.
    const std::vector<Search>& searches() const { return searches_; }

  private:
    enum class Step { loading, computing, searching };

    void look();
    void selectMore();
    bool allPassesKnown() const;
    void showPass();
    void markPasses();
    void beginSearch();
    void endSearch();

    std::shared_ptr<AppState> state_;
    DemoShow show_;
    std::size_t satellites_;
    bool search_;
    double restSeconds_;
    Step step_ = Step::loading;
    std::optional<PassInfo> picked_;
    std::size_t resolvedConflicts_ = 0;
    std::unique_ptr<Timer> timer_;
    using SteadyClock = std::chrono::steady_clock;
    bool isSearching_ = false;
    SteadyClock::time_point turned_;  // when the search began, or the rest
    double processorAtBegin_ = 0;
    std::vector<Search> searches_;
};

/// The pass to show and the channel to work in it, of a satellite with a downlink: the first under
/// way, with a transponder if there is one, so that the uplink is tuned as well; else the first of
/// the next three hours with a transponder and at least ten degrees; else the first to come.
std::optional<PassInfo> passToShow(const AppState& state);

}  // namespace veloran
