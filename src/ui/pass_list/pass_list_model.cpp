#include "ui/pass_list/pass_list_model.h"

#include <algorithm>
#include <map>
#include <utility>

namespace veloran {

namespace {

/// Where the entries of the queue stand, to look up row by row.
class QueueMarks {
  public:
    explicit QueueMarks(const AppState& state)
        : state_(state), numbers_(passQueueNumbers(state.queuedPassIds)) {
        if (numbers_.empty()) return;
        for (auto& entry : state.queueEntries()) states_.emplace(std::move(entry.id), entry.state);
    }

    std::optional<QueueEntryState> of(const PassRow& row) const {
        // To make the identifier of every pass would take longer than all else.
        if (numbers_.empty() || !numbers_.contains(row.satellite->id)) return std::nullopt;
        const auto id = state_.queuedPassId(*row.satellite, row.pass());
        const auto found = id ? states_.find(*id) : states_.end();
        return found == states_.end() ? std::nullopt : std::optional(found->second);
    }

  private:
    const AppState& state_;
    std::set<std::int64_t> numbers_;
    std::map<std::string, QueueEntryState> states_;
};

}  // namespace

PassListModel::PassListModel(std::shared_ptr<AppState> state, QObject* parent)
    : QAbstractListModel(parent), state_(std::move(state)) {
    refresh();
}

void PassListModel::refresh() {
    if (!areSourcesAsShown()) readSources();
    const auto& pass = state_->selectedPass.get();
    const auto selected = pass ? std::optional(pass->id) : std::nullopt;
    if (selected == selected_ && state_->queuedPassIds.get() == queued_) return;
    selected_ = selected;
    queued_ = state_->queuedPassIds;
    updateTimes();
}

/// Asked with every tick, so it copies nothing that is shared.
bool PassListModel::areSourcesAsShown() const {
    // A long search fills one list after the other: they are shown when it is done.
    const bool isFilling = state_->passProgress->has_value();
    auto shown = sources_.begin();
    for (const SatellitePtr& satellite : state_->satellites.get()) {
        if (!satellite->isSelected) continue;
        if (shown == sources_.end() || shown->satellite != satellite ||
            (shown->list != satellite->passes && !isFilling)) {
            return false;
        }
        ++shown;
    }
    return shown == sources_.end();
}

void PassListModel::readSources() {
    const auto satellites = state_->selectedSatellites();
    beginResetModel();
    sources_.clear();
    for (const SatellitePtr& s : satellites) sources_.push_back({s, s->passes});
    rows_ = sortedPassRows(satellites);
    moments_ = momentsNow();
    endResetModel();
}

void PassListModel::updateTimes() {
    const std::vector<RowMoment> before = std::exchange(moments_, momentsNow());
    for (int i = 0; i < rowCount(); ++i) {
        const auto row = static_cast<std::size_t>(i);
        if (moments_[row] != before[row]) emit dataChanged(index(i), index(i));
    }
}

int PassListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant PassListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role != Qt::AccessibleTextRole && role != Qt::DisplayRole) return {};
    const PassRowLook shown = look(index.row());
    return QString::fromStdString(role == Qt::DisplayRole ? shown.name : spokenPassRow(shown));
}

PassRowLook PassListModel::look(int index) const {
    return passRowLook(row(index), moments_[static_cast<std::size_t>(index)]);
}

std::vector<RowMoment> PassListModel::momentsNow() const {
    const Instant now = state_->now();
    const auto next = nextPassIndex(rows_, now);
    const QueueMarks marks(*state_);
    std::vector<RowMoment> moments;
    moments.reserve(rows_.size());
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        moments.push_back(rowMoment(rows_[i], isSelectedPass(rows_[i], state_->selectedPass),
                                    marks.of(rows_[i]), next == i, now));
    }
    return moments;
}

std::optional<int> PassListModel::findPass(std::int64_t satelliteId, Instant riseTime,
                                           Instant setTime) const {
    const auto found = std::ranges::find_if(rows_, [&](const PassRow& row) {
        return row.satellite->id == satelliteId && row.riseTime <= setTime &&
               row.setTime >= riseTime;
    });
    if (found == rows_.end()) return std::nullopt;
    return static_cast<int>(found - rows_.begin());
}

}  // namespace veloran
