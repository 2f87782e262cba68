#include "rehearse/rehearsal.h"

#include <fmt/format.h>

#include <algorithm>
#include <boost/json/serialize.hpp>
#include <cmath>
#include <set>
#include <utility>
#include <vector>

namespace veloran {

namespace {

constexpr const char* kGroup = "amateur";
constexpr double kSlowestTickHz = 1;
constexpr double kHourSeconds = 3600;
constexpr double kForgottenAfter = 24 * kHourSeconds;

const char* nameOf(RehearsalEvent::Kind kind) {
    switch (kind) {
        case RehearsalEvent::Kind::queued:
            return "queued";
        case RehearsalEvent::Kind::conflict:
            return "conflict";
        case RehearsalEvent::Kind::started:
            return "started";
        case RehearsalEvent::Kind::ended:
            return "ended";
        case RehearsalEvent::Kind::skipped:
            return "skipped";
    }
    return "";
}

/// Element lines without a name line call their satellite "Unknown".
std::string nameOf(const std::string& name, std::int64_t noradId) {
    return name.empty() || name == "Unknown" ? fmt::format("NORAD {}", noradId) : name;
}

std::vector<std::int64_t> numbersIn(const std::string& elements) {
    std::set<std::int64_t> numbers;
    for (const auto& set : TLEManager::parseAuto(elements)) numbers.insert(set.noradId);
    return {numbers.begin(), numbers.end()};
}

}  // namespace

std::string eventLine(const RehearsalEvent& event) {
    // Right at the zenith the sine of an elevation may exceed 1.
    const double peak = std::isnan(event.maxElevation) ? 90 : event.maxElevation;
    return fmt::format(R"({{"event":"{}","at":{:.3f},"satellite":{},"rise":{:.3f},"set":{:.3f},)"
                       R"("maxElevation":{:.3f},"why":{}}})",
                       nameOf(event.kind), event.at.unixSeconds(),
                       boost::json::serialize(event.satellite), event.rise.unixSeconds(),
                       event.set.unixSeconds(), peak, boost::json::serialize(event.why));
}

Rehearsal::Rehearsal(const RehearsalPlan& plan, Report report)
    : machine_(plan.start), report_(std::move(report)) {
    machine_.settings.set("tleCategories", std::vector<std::string>{kGroup});
    machine_.settings.set("selectedSatIds", numbersIn(plan.elements));
    app_ = AppState::create(machine_.machine);
    app_->obsLatitude = plan.latitude;
    app_->obsLongitude = plan.longitude;
    app_->obsAltitude = plan.altitude;
    app_->minAutoTrackElevation = plan.minElevation;
    app_->dopplerUpdateHz = kSlowestTickHz;  // nobody listens
    app_->queuedPassIds.alsoAfterChange([this](const QueueIds& ids) { queueChanged(ids); });
    app_->isTracking.alsoAfterChange([this](bool runs) { sessionChanged(runs); });
    setElements(plan.elements);
    app_->loadData();
    if (plan.refreshHours) {
        refreshTimer_ =
            machine_.loop.every(*plan.refreshHours * kHourSeconds, [this] { app_->refreshTLEs(); });
    }
    machine_.loop.runPosted();
    look();
}

Rehearsal::~Rehearsal() = default;

void Rehearsal::setElements(const std::string& text) {
    machine_.http.answers[app_->elements().celestrakURL(kGroup)].body = text;
}

void Rehearsal::advance(std::int64_t seconds) {
    for (; seconds > 0; --seconds) {
        machine_.loop.advance(1);
        look();
    }
}

void Rehearsal::report(Kind kind, const KnownPass& pass, std::string why) {
    report_({kind, now(), pass.satellite, pass.rise, pass.set, pass.maxElevation, std::move(why)});
}

void Rehearsal::look() {
    takeLists();
    if (std::exchange(listsAreNew_, false)) markNewPasses();
    settle();
}

void Rehearsal::takeLists() {
    bool changed = false;
    for (const auto& satellite : app_->satellites.get()) {
        if (!satellite->isSelected) continue;
        auto& seen = lists_[satellite->id];
        changed = changed || seen != satellite->passes;
        seen = satellite->passes;
    }
    if (!changed) return;
    listsAreNew_ = true;
    for (auto& pass : passes_) follow(pass);
}

void Rehearsal::follow(KnownPass& pass) {
    const auto& list = *lists_[pass.noradId];
    const auto listed = std::ranges::find_if(list, [&pass](const PredictedPass& each) {
        return isSamePass(spanOf(pass.noradId, each), pass.span());
    });
    if (listed == list.end()) return;
    pass.rise = listed->riseTime;
    pass.set = listed->setTime;
    pass.maxElevation = listed->maxElevation;
    auto id = passQueueId(pass.noradId, pass.rise);
    if (app_->queuedPassIds->contains(id)) pass.queueId = std::move(id);
}

void Rehearsal::markNewPasses() {
    for (const auto& [satellite, pass] : app_->allPassesSorted()) {
        const bool isWhole = pass.setTime < satellite->passSearch->end;
        if (isWhole && !known(satellite->id, pass)) mark(satellite, pass);
    }
}

void Rehearsal::mark(const SatellitePtr& satellite, const PredictedPass& listed) {
    KnownPass& pass = passes_.emplace_back();
    pass.noradId = satellite->id;
    pass.satellite = nameOf(satellite->name, satellite->id);
    pass.queueId = passQueueId(satellite->id, listed.riseTime);
    pass.rise = listed.riseTime;
    pass.set = listed.setTime;
    pass.maxElevation = listed.maxElevation;
    marked_ = &pass;
    app_->togglePassQueued(satellite, listed);
    marked_ = nullptr;
    const auto conflict = app_->pendingPassConflict.get();
    if (!conflict) return;
    const auto& existing = conflict->existing;
    const auto why =
        fmt::format("Overlaps a queued pass of {}", nameOf(existing.satName, existing.noradId));
    app_->resolveConflictKeepExisting();
    pass.queueId.clear();
    report(Kind::conflict, pass, why);
}

/// Tells of a marked pass before the first firing of the queue, which may come within the call.
void Rehearsal::queueChanged(const QueueIds& ids) {
    if (!marked_ || !ids.contains(marked_->queueId)) return;
    report(Kind::queued, *marked_, textOf(*marked_));
}

Rehearsal::KnownPass* Rehearsal::known(std::int64_t noradId, const PredictedPass& listed) {
    const auto found =
        std::ranges::find_if(passes_, [span = spanOf(noradId, listed)](const KnownPass& pass) {
            return isSamePass(span, pass.span());
        });
    return found == passes_.end() ? nullptr : &*found;
}

/// The words for an entry as they stand before its pass has set; afterwards all say the same.
void Rehearsal::settle() {
    for (auto& pass : passes_) {
        const bool isOpen = !pass.queueId.empty() && !pass.wasStarted && !pass.wasSkipped;
        if (!isOpen || now() < pass.set - kQueueSeconds) continue;
        if (now() < pass.set) {
            pass.lastText = textOf(pass);
            continue;
        }
        pass.wasSkipped = true;
        report(Kind::skipped, pass, pass.lastText.empty() ? textOf(pass) : pass.lastText);
    }
    std::erase_if(passes_, [this](const KnownPass& pass) {
        return &pass != session_ && now() > pass.set + kForgottenAfter;
    });
}

std::string Rehearsal::textOf(const KnownPass& pass) const {
    for (const auto& entry : app_->queueEntries()) {
        if (entry.id == pass.queueId) return queueEntryText(entry.state);
    }
    return queueEntryText(QueueEntryState::gone);
}

void Rehearsal::sessionChanged(bool runs) {
    takeLists();
    if (runs) {
        const auto& picked = *app_->selectedPass.get();
        session_ = known(picked.satellite->id, picked.pass);
        if (!session_) return;
        session_->wasStarted = true;
        report(Kind::started, *session_, queueEntryText(QueueEntryState::tracked));
    } else if (session_) {
        report(Kind::ended, *std::exchange(session_, nullptr),
               queueEntryText(QueueEntryState::ended));
    }
}

}  // namespace veloran
