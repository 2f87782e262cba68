#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/instant.h"
#include "orbit/pass_predictor.h"

namespace veloran {

// The queue of marked passes, decided as functions of values. An entry is an identifier and
// nothing else; its pass is looked up again each time.

inline constexpr double kQueueSeconds = 1.0;  ///< period of the queue's timer
/// How long after set a pass in the list still counts as the one that is tracked, so that the
/// firing that ends the session finds it.
inline constexpr double kQueueGraceSeconds = 60.0;

using QueueIds = std::set<std::string>;

/// "<NORAD number>-<rise in whole seconds since 2001>", truncated toward zero.
std::string passQueueId(std::int64_t noradId, Instant riseTime);
/// The NORAD number of an identifier.
std::optional<std::int64_t> passQueueNumber(std::string_view id);
/// The moment of rising that an identifier tells, in whole seconds.
std::optional<Instant> passQueueRise(std::string_view id);
/// The NORAD numbers of all entries.
std::set<std::int64_t> passQueueNumbers(const QueueIds& ids);

/// A pass in the queue, as it is shown.
struct QueuedPassRef {
    std::string id;
    std::string satName;
    std::int64_t noradId = 0;
    Instant riseTime;
    Instant setTime;
    double maxElevation = 0;  ///< degrees

    bool operator==(const QueuedPassRef&) const = default;
};

/// Two passes that one radio cannot both follow.
struct PassConflict {
    QueuedPassRef existing;  ///< already in the queue
    QueuedPassRef incoming;  ///< what the user wants to add

    bool operator==(const PassConflict&) const = default;
};

QueuedPassRef makePassRef(std::int64_t noradId, const std::string& satName,
                          const PredictedPass& pass);

/// Each rises strictly before the other sets; touching is no overlap.
bool passesOverlap(const PredictedPass& a, const PredictedPass& b);

/// A body with its passes, as the queue sees it.
struct QueueBody {
    std::int64_t noradId = 0;
    std::string name;
    std::shared_ptr<const PassList> passes;
};

/// The first queued pass of the selected bodies that overlaps `incoming`.
std::optional<QueuedPassRef> findConflict(const std::vector<QueueBody>& selected,
                                          const QueueIds& queued, const PredictedPass& incoming);

/// The pass of the body's present list that is the same as `pass`, which may come from an earlier
/// one; `pass` itself where there is none.
const PredictedPass& presentPass(const QueueBody& body, const PredictedPass& pass);

/// The identifier under which `pass` of the body stands in the queue, itself or as presentPass.
std::optional<std::string> queuedIdOf(const QueueBody& body, const QueueIds& queued,
                                      const PredictedPass& pass);

/// An entry whose pass a new list holds again.
struct FoundEntry {
    std::string id;         ///< the identifier so far
    QueuedPassRef present;  ///< the pass in the new list, with its own identifier
};

/// Which of `entries` have their pass in `former`, the list that `body.passes` takes the place of,
/// and again in the present list: the two passes overlap by more than half of the shorter.
std::vector<FoundEntry> foundAgain(const QueueIds& entries, const QueueBody& body,
                                   const PassList& former);

struct QueueView {
    std::vector<QueueBody> selected;   ///< in the order of the catalogue
    std::optional<QueueBody> tracked;  ///< the session's body; absent when none runs
    const QueueIds& queued;
    double minAutoTrackElevation = 0;  ///< degrees
    /// The queued pass that the session followed at the last firing. The session goes on by it, and
    /// ends by it, when the list of the body does not tell any more: just made anew after its set,
    /// not there yet after a reload, or older than a sleep of the machine.
    std::optional<QueuedPassRef> followed = {};
};

/// What one firing of the queue's timer does, in this order.
struct QueueDecision {
    struct Start {
        std::size_t body;  ///< index into QueueView::selected
        std::size_t pass;  ///< index into its passes
    };
    bool stop = false;  ///< end the running session: its queued pass has set
    std::optional<Start> start;
    /// The queued pass that the session under way follows; absent for one started by hand.
    std::optional<QueuedPassRef> followed = {};
};

QueueDecision decideQueue(const QueueView& view, Instant now);

/// Where an entry of the queue stands. Entries that the rules skip say why.
enum class QueueEntryState {
    waiting,     ///< its pass is to come, or the next firing of the timer starts it
    held,        ///< its pass is under way, and another session has the radio
    tracked,     ///< the running session follows it, whatever else is true of it
    ended,       ///< its pass has set, and may be listed no longer
    tooLow,      ///< its pass stays under the minimum elevation
    deselected,  ///< its satellite is not among the selected ones
    gone         ///< its satellite has no pass that rises at that second any more
};

struct QueueEntry {
    std::string id;
    QueueEntryState state = QueueEntryState::gone;
    std::optional<QueuedPassRef> pass;  ///< absent where no list holds it
};

/// Every entry with its state, in order of identifiers.
std::vector<QueueEntry> describeQueue(const QueueView& view, Instant now);

/// The state in words, for a tooltip or a status line.
std::string queueEntryText(QueueEntryState state);
/// Whether the rules skip the entry as things stand.
bool willNotBeTracked(QueueEntryState state);

}  // namespace veloran
