#include "ui/quick_list/quick_list_model.h"

#include <fmt/format.h>

#include "ui/formats.h"
#include "ui/q_text.h"

namespace veloran {

QuickListLook quickListLook(const Satellite& satellite) {
    const auto& channels = satellite.transmitters;
    const std::size_t passes = satellite.passes->size();
    return {.isSelected = satellite.isSelected,
            .name = satellite.name,
            .norad = noradText(satellite.id),
            .channels = channels.empty() ? "" : fmt::format("{} TX", channels.size()),
            .passes = passes == 0 ? "" : fmt::format("{} passes", passes),
            .frequency = channels.empty() ? "" : channels.front().displayFreqMHz()};
}

std::string spokenQuickRow(const QuickListLook& look) {
    std::string text = look.name;
    for (const std::string& part : {look.norad, look.channels, look.passes, look.frequency}) {
        if (!part.empty()) text += ", " + part;
    }
    return text;
}

QuickListModel::QuickListModel(std::shared_ptr<AppState> state, QObject* parent)
    : QAbstractListModel(parent), state_(std::move(state)) {
    refresh();
}

void QuickListModel::setSearch(const QString& text) {
    searchText_ = text.toStdString();
    filter();
}

void QuickListModel::refresh() {
    if (search_.satellites() == state_->satellites.get()) return;
    search_ = SatelliteSearch(state_->satellites);
    filter();
}

void QuickListModel::filter() {
    beginResetModel();
    filtered_ = search_.matches(searchText_);
    endResetModel();
}

int QuickListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(filtered_.size());
}

Qt::ItemFlags QuickListModel::flags(const QModelIndex& index) const {
    return QAbstractListModel::flags(index) | Qt::ItemIsUserCheckable;
}

QVariant QuickListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const SatellitePtr& shown = satellite(index.row());
    if (role == Qt::DisplayRole) return qText(shown->name);
    if (role == Qt::AccessibleTextRole) return qText(spokenQuickRow(quickListLook(*shown)));
    if (role == Qt::CheckStateRole) return shown->isSelected ? Qt::Checked : Qt::Unchecked;
    return {};
}

bool QuickListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::CheckStateRole) return false;
    const SatellitePtr toggled = satellite(index.row());
    const bool wanted = value.toInt() == Qt::Checked;
    if (toggled->isSelected.get() == wanted) return false;
    state_->toggleSatellite(toggled);
    emit dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

}  // namespace veloran
