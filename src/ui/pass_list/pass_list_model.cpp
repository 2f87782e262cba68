#include "ui/pass_list/pass_list_model.h"

#include <algorithm>
#include <cmath>

namespace veloran {

PassListModel::PassListModel(std::shared_ptr<AppState> state, QObject* parent)
    : QAbstractListModel(parent), state_(std::move(state)) {
    refresh();
}

void PassListModel::refresh() {
    const auto satellites = state_->selectedSatellites();
    std::vector<Source> sources;
    sources.reserve(satellites.size());
    for (const SatellitePtr& s : satellites) sources.push_back({s, s->passes});
    if (sources != sources_) {
        beginResetModel();
        sources_ = std::move(sources);
        rows_ = sortedPassRows(satellites);
        endResetModel();
    }
    const auto& pass = state_->selectedPass.get();
    const auto selected = pass ? std::optional(pass->id) : std::nullopt;
    if (selected == selected_) return;
    selected_ = selected;
    updateTimes();
}

void PassListModel::updateTimes() {
    if (!rows_.empty()) emit dataChanged(index(0), index(rowCount() - 1));
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
    const Instant now = state_->now();
    const PassRow& shown = row(index);
    return passRowLook(shown, isSelectedPass(shown, state_->selectedPass),
                       nextPassIndex(rows_, now) == static_cast<std::size_t>(index), now);
}

std::optional<int> PassListModel::findPass(std::int64_t satelliteId, Instant riseTime) const {
    constexpr double kSamePassSeconds = 60;
    const auto found = std::ranges::find_if(rows_, [&](const PassRow& row) {
        return row.satellite->id == satelliteId &&
               std::abs(row.pass().riseTime - riseTime) < kSamePassSeconds;
    });
    if (found == rows_.end()) return std::nullopt;
    return static_cast<int>(found - rows_.begin());
}

}  // namespace veloran
