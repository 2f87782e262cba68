#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/app_state.h"
#include "ui/paint.h"

namespace veloran {

/// One coming pass of one favourite, without a copy of its track: the list it is part of is a
/// snapshot that stays as it is.
struct PassRow {
    SatellitePtr satellite;
    std::shared_ptr<const PassList> list;
    std::size_t index = 0;
    Instant riseTime;  ///< with setTime those of the pass: here they are read in passing, while
    Instant setTime;   ///< tens of thousands of passes lie all over the memory

    const PredictedPass& pass() const { return (*list)[index]; }
};

/// The passes of all bodies, one body after the other.
std::vector<PassRow> passRows(const std::vector<SatellitePtr>& satellites);

/// By a number of each row; equal ones stay in their order. Looks each row up once.
template <class NumberOf>
std::vector<PassRow> sortedBy(NumberOf numberOf, std::vector<PassRow> rows) {
    std::vector<std::pair<double, std::size_t>> order;
    order.reserve(rows.size());
    for (const PassRow& row : rows) order.emplace_back(numberOf(row), order.size());
    std::ranges::sort(order);
    std::vector<PassRow> sorted;
    sorted.reserve(rows.size());
    for (const auto& [number, row] : order) sorted.push_back(std::move(rows[row]));
    return sorted;
}

/// The passes of AppState::allPassesSorted, earliest first.
std::vector<PassRow> sortedPassRows(const std::vector<SatellitePtr>& selectedSatellites);

/// The first row whose pass is still to rise.
std::optional<std::size_t> nextPassIndex(const std::vector<PassRow>& rows, Instant now);

/// Whether this is the selected pass, whose own copy may be from an earlier computation.
bool isSelectedPass(const PassRow& row, const std::optional<PassInfo>& selectedPass);

/// What of a row changes without a new computation.
struct RowMoment {
    bool isSelected = false;
    std::optional<QueueEntryState> queued;  ///< where its entry in the queue stands
    bool isInProgress = false;
    bool isNext = false;
    double aheadSeconds = 0;  ///< of the rise, in whole minutes; negative once it has begun
    bool operator==(const RowMoment&) const = default;
};
RowMoment rowMoment(const PassRow& row, bool isSelected, std::optional<QueueEntryState> queued,
                    bool isNext, Instant now);

/// Everything a row shows beside its thumbnail.
struct PassRowLook {
    std::string name;
    Tint nameInk;
    std::string time;
    Tint timeInk;
    std::string relative;
    Tint relativeInk;
    std::string elevation;
    Tint elevationInk;
    std::string duration;
    std::string direction;
    std::optional<Tint> background;
    bool isSelected;
    std::optional<QueueEntryState> queued;
    std::string warning;  ///< why the queue will skip the pass; empty where it will not
};
PassRowLook passRowLook(const PassRow& row, const RowMoment& moment);

/// Where the entry stands and what a click on the mark in front of a row would do.
std::string queueMarkHelp(std::optional<QueueEntryState> queued);

/// The row in words, for a screen reader.
std::string spokenPassRow(const PassRowLook& look);

}  // namespace veloran
