#include "core/duty.h"

namespace veloran {

namespace {

bool mayBeFoundAgain(const QueueEntry& entry, Instant now) {
    const auto rise = passQueueRise(entry.id);
    return rise && now < *rise + kLostPassSeconds;
}

bool isAhead(const QueueEntry& entry, Instant now) {
    switch (entry.state) {
        case QueueEntryState::waiting:
        case QueueEntryState::held:
            return true;
        case QueueEntryState::gone:
            return mayBeFoundAgain(entry, now);
        case QueueEntryState::tracked:
        case QueueEntryState::ended:
        case QueueEntryState::tooLow:
        case QueueEntryState::deselected:
            break;
    }
    return false;
}

}  // namespace

Duty dutyOf(const std::optional<std::string>& tracked, const std::vector<QueueEntry>& entries,
            Instant now) {
    Duty duty;
    if (tracked) duty.session = Duty::Session{*tracked, std::nullopt};
    for (const auto& entry : entries) {
        if (entry.state == QueueEntryState::tracked && duty.session && entry.pass) {
            duty.session->ends = entry.pass->setTime;
        }
        if (!isAhead(entry, now)) continue;
        ++duty.passesAhead;
        if (!entry.pass) continue;
        if (!duty.next || entry.pass->riseTime < duty.next->riseTime) duty.next = entry.pass;
    }
    return duty;
}

}  // namespace veloran
