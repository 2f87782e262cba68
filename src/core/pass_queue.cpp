#include "core/pass_queue.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/checked.h"
#include "base/text.h"

namespace veloran {

namespace {

using Place = QueueDecision::Start;

const PredictedPass& passAt(const QueueView& view, const Place& place) {
    return (*view.selected[place.body].passes)[place.pass];
}

/// The first pass of the selected bodies with this identifier.
std::optional<Place> find(const QueueView& view, const std::string& id) {
    const auto number = passQueueNumber(id);
    for (std::size_t body = 0; body < view.selected.size(); ++body) {
        if (view.selected[body].noradId != number) continue;  // most are told apart by this alone
        const auto& passes = *view.selected[body].passes;
        for (std::size_t pass = 0; pass < passes.size(); ++pass) {
            if (passQueueId(*number, passes[pass].riseTime) == id) return Place{body, pass};
        }
    }
    return std::nullopt;
}

/// The queued pass that the running session follows, the grace after its set included.
const PredictedPass* runningPass(const QueueView& view, Instant now) {
    if (!view.tracked) return nullptr;
    for (const auto& pass : *view.tracked->passes) {
        const bool inside = now >= pass.riseTime && now < pass.setTime + kQueueGraceSeconds;
        if (inside && view.queued.contains(passQueueId(view.tracked->noradId, pass.riseTime))) {
            return &pass;
        }
    }
    return nullptr;
}

bool underWay(const PredictedPass& pass, Instant now) {
    return now >= pass.riseTime && now < pass.setTime;
}

bool tooLow(const QueueView& view, const PredictedPass& pass) {
    return view.minAutoTrackElevation > pass.maxElevation;
}

std::optional<Place> nextStart(const QueueView& view, Instant now) {
    std::optional<Place> earliest;
    for (const auto& id : view.queued) {
        const auto place = find(view, id);
        if (!place) continue;
        const auto& pass = passAt(view, *place);
        if (tooLow(view, pass) || !underWay(pass, now)) continue;
        if (!earliest || pass.riseTime < passAt(view, *earliest).riseTime) earliest = place;
    }
    return earliest;
}

/// The queued pass that the session follows until it sets. It is the session's own copy: the
/// satellite may have been deselected since, or its passes computed anew.
std::optional<QueuedPassRef> followedPass(const QueueView& view, Instant now) {
    const auto* running = runningPass(view, now);
    if (!running || now >= running->setTime) return std::nullopt;
    return makePassRef(view.tracked->noradId, view.tracked->name, *running);
}

/// The state of a pass that is still predicted and that no session follows.
QueueEntryState stateOf(const QueueView& view, const PredictedPass& pass, Instant now) {
    if (now >= pass.setTime) return QueueEntryState::ended;
    if (tooLow(view, pass)) return QueueEntryState::tooLow;
    return view.tracked && underWay(pass, now) ? QueueEntryState::held : QueueEntryState::waiting;
}

bool isSelected(const QueueView& view, const std::string& id) {
    const auto number = passQueueNumber(id);
    return std::any_of(view.selected.begin(), view.selected.end(),
                       [&number](const auto& body) { return body.noradId == number; });
}

}  // namespace

std::string passQueueId(std::int64_t noradId, Instant riseTime) {
    return fmt::format("{}-{}", noradId, checkedInt64(riseTime.secondsSinceReference));
}

/// The number of the Sun has a minus sign of its own.
std::optional<std::int64_t> passQueueNumber(std::string_view id) {
    return parseInt64(id.substr(0, id.find('-', 1)));
}

std::set<std::int64_t> passQueueNumbers(const QueueIds& ids) {
    std::set<std::int64_t> numbers;
    for (const auto& id : ids) {
        if (const auto number = passQueueNumber(id)) numbers.insert(*number);
    }
    return numbers;
}

QueuedPassRef makePassRef(std::int64_t noradId, const std::string& satName,
                          const PredictedPass& pass) {
    return {passQueueId(noradId, pass.riseTime),
            satName,
            noradId,
            pass.riseTime,
            pass.setTime,
            pass.maxElevation};
}

bool passesOverlap(const PredictedPass& a, const PredictedPass& b) {
    return a.riseTime < b.setTime && b.riseTime < a.setTime;
}

std::optional<QueuedPassRef> findConflict(const std::vector<QueueBody>& selected,
                                          const QueueIds& queued, const PredictedPass& incoming) {
    for (const auto& body : selected) {
        for (const auto& pass : *body.passes) {
            if (passesOverlap(pass, incoming) &&
                queued.contains(passQueueId(body.noradId, pass.riseTime))) {
                return makePassRef(body.noradId, body.name, pass);
            }
        }
    }
    return std::nullopt;
}

QueueDecision decideQueue(const QueueView& view, Instant now) {
    QueueDecision decision;
    if (view.tracked) {
        const auto* running = runningPass(view, now);
        // A session on no queued pass was started by hand, and has priority.
        if (!running || now < running->setTime) return decision;
        decision.stop = true;
    }
    decision.start = nextStart(view, now);
    return decision;
}

std::vector<QueueEntry> describeQueue(const QueueView& view, Instant now) {
    const auto followed = followedPass(view, now);
    std::vector<QueueEntry> entries;
    for (const auto& id : view.queued) {
        if (followed && followed->id == id) {
            entries.push_back({id, QueueEntryState::tracked, followed});
        } else if (const auto place = find(view, id)) {
            const auto& body = view.selected[place->body];
            const auto& pass = passAt(view, *place);
            entries.push_back(
                {id, stateOf(view, pass, now), makePassRef(body.noradId, body.name, pass)});
        } else {
            const auto state =
                isSelected(view, id) ? QueueEntryState::gone : QueueEntryState::deselected;
            entries.push_back({id, state, std::nullopt});
        }
    }
    return entries;
}

std::string queueEntryText(const QueueEntry& entry) {
    switch (entry.state) {
        case QueueEntryState::waiting:
            return "Will be tracked when it rises";
        case QueueEntryState::held:
            return "Under way; waiting for the running session to end";
        case QueueEntryState::tracked:
            return "Being tracked";
        case QueueEntryState::ended:
            return "Has set";
        case QueueEntryState::tooLow:
            return "Will not be tracked: stays under the minimum elevation";
        case QueueEntryState::deselected:
            return "Will not be tracked: the satellite is no longer selected";
        case QueueEntryState::gone:
            return "Will not be tracked: the pass has moved or is no longer predicted";
    }
    return {};
}

}  // namespace veloran
