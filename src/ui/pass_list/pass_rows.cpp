#include "ui/pass_list/pass_rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "core/same_pass.h"
#include "ui/formats.h"

namespace veloran {

namespace {

std::optional<Tint> rowBackground(const RowMoment& moment) {
    if (moment.isSelected) return Tint{Ink::blue, 0.15};
    if (moment.isInProgress) return Tint{Ink::green, 0.08};
    if (moment.isNext) return Tint{Ink::orange, 0.06};
    return std::nullopt;
}

/// As much as the text about it tells.
double wholeMinutes(double secondsAhead) {
    constexpr double kMinute = 60;
    return secondsAhead < 0 ? -1 : kMinute * std::floor(secondsAhead / kMinute);
}

std::string queueWarning(std::optional<QueueEntryState> queued) {
    return queued && willNotBeTracked(*queued) ? queueEntryText(*queued) : std::string();
}

std::string spokenQueue(std::optional<QueueEntryState> queued) {
    return queued ? fmt::format(", queued: {}", queueEntryText(*queued)) : std::string();
}

}  // namespace

std::vector<PassRow> passRows(const std::vector<SatellitePtr>& satellites) {
    std::vector<PassRow> rows;
    for (const SatellitePtr& satellite : satellites) {
        const PassList& list = *satellite->passes;
        for (std::size_t i = 0; i < list.size(); ++i) {
            rows.push_back({satellite, satellite->passes, i, list[i].riseTime, list[i].setTime});
        }
    }
    return rows;
}

std::vector<PassRow> sortedPassRows(const std::vector<SatellitePtr>& selectedSatellites) {
    return sortedBy([](const PassRow& row) { return row.riseTime.secondsSinceReference; },
                    passRows(selectedSatellites));
}

std::optional<std::size_t> nextPassIndex(const std::vector<PassRow>& rows, Instant now) {
    const auto next =
        std::ranges::upper_bound(rows, now, {}, [](const PassRow& row) { return row.riseTime; });
    if (next == rows.end()) return std::nullopt;
    return static_cast<std::size_t>(next - rows.begin());
}

bool isSelectedPass(const PassRow& row, const std::optional<PassInfo>& selectedPass) {
    if (!selectedPass) return false;
    const PredictedPass& pass = selectedPass->pass;
    // Most rows are told apart by their times, which stand in the row itself.
    if (row.riseTime > pass.setTime || row.setTime < pass.riseTime) return false;
    return isSamePass({row.satellite->id, row.riseTime, row.setTime},
                      spanOf(selectedPass->noradId(), pass));
}

RowMoment rowMoment(const PassRow& row, bool isSelected, std::optional<QueueEntryState> queued,
                    bool isNext, Instant now) {
    return {.isSelected = isSelected,
            .queued = queued,
            .isInProgress = now >= row.riseTime && now <= row.setTime,
            .isNext = isNext,
            .aheadSeconds = wholeMinutes(row.riseTime - now)};
}

PassRowLook passRowLook(const PassRow& row, const RowMoment& moment) {
    const PredictedPass& pass = row.pass();
    const bool isInProgress = moment.isInProgress;
    return {
        .name = row.satellite->name,
        .nameInk = {isInProgress ? Ink::green : Ink::primary},
        .time = listTime(pass.riseTime),
        .timeInk = {isInProgress ? Ink::green : Ink::secondary},
        .relative = relativeTime(moment.aheadSeconds),
        .relativeInk = {isInProgress ? Ink::green : Ink::secondary, 0.7},
        .elevation = elevationText(pass.maxElevation),
        .elevationInk = {elevationColor(pass.maxElevation)},
        .duration = formatDuration(pass.setTime - pass.riseTime),
        .direction = listDirection(pass.trackPoints),
        .background = rowBackground(moment),
        .isSelected = moment.isSelected,
        .queued = moment.queued,
        .warning = queueWarning(moment.queued),
    };
}

std::string queueMarkHelp(std::optional<QueueEntryState> queued) {
    if (queued) return queueEntryText(*queued) + "\nRemove this pass from the auto-track queue";
    return "Queue this pass for auto-tracking. The scheduler will arm SAT_PROTO at AOS and disarm "
           "at "
           "LOS.";
}

std::string spokenPassRow(const PassRowLook& look) {
    return fmt::format("{}, rises {}, {}, highest {}, lasts {}, {}{}{}", look.name, look.time,
                       look.relative, look.elevation, look.duration, look.direction,
                       look.isSelected ? ", selected" : "", spokenQueue(look.queued));
}

}  // namespace veloran
