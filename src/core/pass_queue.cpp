#include "core/pass_queue.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/checked.h"
#include "base/text.h"
#include "core/same_pass.h"

namespace veloran {

namespace {

using Place = QueueDecision::Start;

const PredictedPass& passAt(const QueueView& view, const Place& place) {
    return (*view.selected[place.body].passes)[place.pass];
}

std::int64_t secondOf(Instant riseTime) {
    return checkedInt64(riseTime.secondsSinceReference);
}

/// The first pass of the selected bodies with this identifier. Compares its numbers, as old entries
/// are many and are looked up each second.
std::optional<Place> find(const QueueView& view, const std::string& id) {
    const auto number = passQueueNumber(id);
    const auto rise = passQueueRise(id);
    if (!number || !rise) return std::nullopt;
    const auto second = secondOf(*rise);
    for (std::size_t body = 0; body < view.selected.size(); ++body) {
        if (view.selected[body].noradId != *number) continue;
        const auto& passes = *view.selected[body].passes;
        for (std::size_t pass = 0; pass < passes.size(); ++pass) {
            if (secondOf(passes[pass].riseTime) == second) return Place{body, pass};
        }
    }
    return std::nullopt;
}

/// The queued pass around this moment in the list of the tracked body, the grace after its set
/// included.
std::optional<QueuedPassRef> listedRunningPass(const QueueView& view, Instant now) {
    for (const auto& pass : *view.tracked->passes) {
        const bool inside = now >= pass.riseTime && now < pass.setTime + kQueueGraceSeconds;
        if (inside && view.queued.contains(passQueueId(view.tracked->noradId, pass.riseTime))) {
            return makePassRef(view.tracked->noradId, view.tracked->name, pass);
        }
    }
    return std::nullopt;
}

/// The queued pass that the running session follows.
std::optional<QueuedPassRef> runningPass(const QueueView& view, Instant now) {
    if (!view.tracked) return std::nullopt;
    if (auto listed = listedRunningPass(view, now)) return listed;
    const auto& followed = view.followed;
    const bool isStill = followed && followed->noradId == view.tracked->noradId &&
                         view.queued.contains(followed->id);
    return isStill ? followed : std::nullopt;
}

bool underWay(const PredictedPass& pass, Instant now) {
    return now >= pass.riseTime && now < pass.setTime;
}

bool tooLow(const QueueView& view, const PredictedPass& pass) {
    return view.minAutoTrackElevation > pass.maxElevation;
}

/// Goes by the passes under way, which are few: the queue keeps the entries of all that have set.
std::optional<Place> nextStart(const QueueView& view, Instant now) {
    std::optional<Place> earliest;
    for (const auto& body : view.selected) {
        for (const auto& pass : *body.passes) {
            if (!underWay(pass, now) || tooLow(view, pass)) continue;
            const auto id = passQueueId(body.noradId, pass.riseTime);
            const auto place = view.queued.contains(id) ? find(view, id) : std::nullopt;
            if (!place || &passAt(view, *place) != &pass) continue;
            if (!earliest || pass.riseTime < passAt(view, *earliest).riseTime) earliest = place;
        }
    }
    return earliest;
}

/// The queued pass that the session follows until it sets. The lists of the selected bodies need
/// not hold it: the satellite may have been deselected since.
std::optional<QueuedPassRef> followedPass(const QueueView& view, Instant now) {
    auto running = runningPass(view, now);
    return running && now < running->setTime ? running : std::nullopt;
}

/// Seconds that two passes have in common; not positive without any.
double commonSeconds(const PredictedPass& a, const PredictedPass& b) {
    return std::min(a.setTime, b.setTime) - std::max(a.riseTime, b.riseTime);
}

/// The pass that has most in common with `pass`, and more than half of the shorter.
const PredictedPass* findAgain(const PassList& list, const PredictedPass& pass) {
    const auto common = [&pass](const PredictedPass& other) { return commonSeconds(pass, other); };
    const auto best = std::ranges::max_element(list, {}, common);
    if (best == list.end()) return nullptr;
    const double shorter = std::min(pass.setTime - pass.riseTime, best->setTime - best->riseTime);
    return common(*best) > shorter / 2 ? &*best : nullptr;
}

/// The state of a pass that is still predicted and that no session follows.
QueueEntryState stateOf(const QueueView& view, const PredictedPass& pass, Instant now) {
    if (now >= pass.setTime) return QueueEntryState::ended;
    if (tooLow(view, pass)) return QueueEntryState::tooLow;
    return view.tracked && underWay(pass, now) ? QueueEntryState::held : QueueEntryState::waiting;
}

/// The state of an entry that no list tells of.
QueueEntryState stateWithoutPass(const QueueView& view, const std::string& id, Instant now) {
    const auto number = passQueueNumber(id);
    const auto body = std::ranges::find_if(
        view.selected, [&number](const auto& each) { return each.noradId == number; });
    if (body == view.selected.end()) return QueueEntryState::deselected;
    // A pass under way stays in its list: one that has risen and is not there has set.
    const bool hasRisen = passQueueRise(id).value_or(now + 1) <= now;
    const bool hasSet = hasRisen && std::ranges::none_of(*body->passes, [now](const auto& pass) {
                            return underWay(pass, now);
                        });
    return hasSet ? QueueEntryState::ended : QueueEntryState::gone;
}

}  // namespace

std::string passQueueId(std::int64_t noradId, Instant riseTime) {
    return fmt::format("{}-{}", noradId, secondOf(riseTime));
}

/// The number of the Sun has a minus sign of its own.
std::optional<std::int64_t> passQueueNumber(std::string_view id) {
    return parseInt64(id.substr(0, id.find('-', 1)));
}

std::optional<Instant> passQueueRise(std::string_view id) {
    const auto dash = id.find('-', 1);
    if (dash == std::string_view::npos) return std::nullopt;
    const auto seconds = parseInt64(id.substr(dash + 1));
    return seconds ? std::optional(Instant{static_cast<double>(*seconds)}) : std::nullopt;
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

const PredictedPass& presentPass(const QueueBody& body, const PredictedPass& pass) {
    const auto isSame = [span = spanOf(body.noradId, pass), &body](const PredictedPass& other) {
        return isSamePass(span, spanOf(body.noradId, other));
    };
    const auto found = std::ranges::find_if(*body.passes, isSame);
    return found == body.passes->end() ? pass : *found;
}

std::optional<std::string> queuedIdOf(const QueueBody& body, const QueueIds& queued,
                                      const PredictedPass& pass) {
    for (const auto* candidate : {&pass, &presentPass(body, pass)}) {
        auto id = passQueueId(body.noradId, candidate->riseTime);
        if (queued.contains(id)) return id;
    }
    return std::nullopt;
}

std::vector<FoundEntry> foundAgain(const QueueIds& entries, const QueueBody& body,
                                   const PassList& former) {
    std::vector<FoundEntry> found;
    if (entries.empty()) return found;  // as for most of a long search
    for (const auto& pass : former) {
        auto id = passQueueId(body.noradId, pass.riseTime);
        const bool isFirst = found.empty() || found.back().id != id;
        const auto* again =
            isFirst && entries.contains(id) ? findAgain(*body.passes, pass) : nullptr;
        if (again) {
            found.push_back({std::move(id), makePassRef(body.noradId, body.name, *again)});
        }
    }
    return found;
}

QueueDecision decideQueue(const QueueView& view, Instant now) {
    QueueDecision decision;
    if (view.tracked) {
        decision.followed = runningPass(view, now);
        // A session on no queued pass was started by hand, and has priority.
        if (!decision.followed || now < decision.followed->setTime) return decision;
        decision.stop = true;
        decision.followed.reset();
    }
    decision.start = nextStart(view, now);
    if (decision.start) {
        const auto& body = view.selected[decision.start->body];
        decision.followed = makePassRef(body.noradId, body.name, passAt(view, *decision.start));
    }
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
            entries.push_back({id, stateWithoutPass(view, id, now), std::nullopt});
        }
    }
    return entries;
}

std::string queueEntryText(QueueEntryState state) {
    switch (state) {
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

bool willNotBeTracked(QueueEntryState state) {
    return state == QueueEntryState::tooLow || state == QueueEntryState::deselected ||
           state == QueueEntryState::gone;
}

}  // namespace veloran
