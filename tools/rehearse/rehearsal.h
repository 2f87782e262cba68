#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "base/instant.h"
#include "core/app_state.h"
#include "core/same_pass.h"
#include "simulation/simulated_machine.h"

namespace veloran {

struct RehearsalPlan {
    std::string elements;  ///< what a download group answers: element lines or orbit messages
    double latitude = 0;   ///< degrees north
    double longitude = 0;  ///< degrees east
    double altitude = 0;   ///< metres
    Instant start;
    double minElevation = 5;             ///< of the queue, degrees
    std::optional<double> refreshHours;  ///< period of reloading the elements; absent: never
};

/// What became of one pass.
struct RehearsalEvent {
    enum class Kind { queued, conflict, started, ended, skipped };
    Kind kind = Kind::queued;
    Instant at;
    std::string satellite;
    Instant rise;  ///< of the pass, as the program predicts it at that moment
    Instant set;
    double maxElevation = 0;  ///< degrees
    std::string why;
};

/// One JSON object, without a line end. Times are seconds since 1970.
std::string eventLine(const RehearsalEvent& event);

/// The program and its queue on a simulated machine, with a user who tracks all satellites of the
/// elements and marks each pass as soon as it is listed whole; at a conflict the pass that is
/// queued already stays. A pass that is listed cut by the end of the search waits for a later list.
/// Nothing listens at the other end of the radio's line.
class Rehearsal {
  public:
    using Report = std::function<void(const RehearsalEvent&)>;

    /// The start of the program: elements loaded, first passes marked. `report` hears of events in
    /// order of time.
    Rehearsal(const RehearsalPlan& plan, Report report);
    ~Rehearsal();
    Rehearsal(const Rehearsal&) = delete;
    Rehearsal& operator=(const Rehearsal&) = delete;

    /// Lets that many whole seconds pass.
    void advance(std::int64_t seconds);

    std::size_t satelliteCount() const { return app_->selectedSatelliteIds->size(); }
    /// What reloads bring from now on.
    void setElements(const std::string& text);
    SimulatedMachine& machine() { return machine_; }
    AppState& app() { return *app_; }

  private:
    /// A pass that was listed whole, until it is over.
    struct KnownPass {
        std::int64_t noradId = 0;
        std::string satellite;
        std::string queueId;  ///< empty: not queued, because of a conflict
        Instant rise;
        Instant set;
        double maxElevation = 0;
        bool wasStarted = false;
        bool wasSkipped = false;
        std::string lastText;  ///< of its entry, just before the set

        PassSpan span() const { return {noradId, rise, set}; }
    };
    using Kind = RehearsalEvent::Kind;

    Instant now() const { return machine_.loop.now(); }
    void report(Kind kind, const KnownPass& pass, std::string why);

    void look();
    void takeLists();
    void follow(KnownPass& pass);
    void markNewPasses();
    void mark(const SatellitePtr& satellite, const PredictedPass& listed);
    KnownPass* known(std::int64_t noradId, const PredictedPass& listed);
    void settle();
    std::string textOf(const KnownPass& pass) const;

    void queueChanged(const QueueIds& ids);
    void sessionChanged(bool runs);

    SimulatedMachine machine_;
    Report report_;
    std::shared_ptr<AppState> app_;
    std::unique_ptr<Timer> refreshTimer_;
    std::map<std::int64_t, std::shared_ptr<const PassList>> lists_;  // as seen last
    bool listsAreNew_ = false;
    std::list<KnownPass> passes_;
    KnownPass* marked_ = nullptr;   // while it is being marked
    KnownPass* session_ = nullptr;  // the one that is tracked
};

}  // namespace veloran
