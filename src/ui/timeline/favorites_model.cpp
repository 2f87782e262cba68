#include "ui/timeline/favorites_model.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include "ui/q_text.h"
#include "ui/satellite_texts.h"

namespace veloran {

FavoriteLook favoriteLook(const Satellite& satellite, const std::vector<UserTLESource>& userSources,
                          Instant now) {
    const auto& tle = satellite.tle;
    const auto days = tle ? tle->ageDays(now) : std::nullopt;
    const std::size_t passes = satellite.passes->size();
    const auto& channels = satellite.transmitters;
    return {
        .name = satellite.name,
        .color = SatelliteColorPalette::color(satellite.id),
        .sources = sourceDisplay(satellite.sources, userSources),
        .sourcesHelp = sourcesHelp(satellite.sources),
        .age = tle ? tle->ageString(now) : "?",
        .ageInk = {ageColor(days.value_or(std::numeric_limits<double>::infinity())), 0.8},
        .passes = passes > 0 ? std::to_string(passes) : "",
        .passesHelp = passes > 0 ? passesHelp(passes) : "",
        .channel = channels.empty() ? "" : channels.front().displayFreqMHz(),
    };
}

std::string spokenFavorite(const FavoriteLook& look) {
    std::string text = look.name;
    if (!look.sources.empty()) text += fmt::format(", from {}", look.sources);
    text += fmt::format(", elements {} old", look.age);
    if (!look.passesHelp.empty()) text += ", " + look.passesHelp;
    if (!look.channel.empty()) text += ", " + look.channel;
    return text;
}

FavoritesModel::FavoritesModel(std::shared_ptr<AppState> state, QObject* parent)
    : QAbstractListModel(parent), state_(std::move(state)) {}

void FavoritesModel::setSatellites(std::vector<SatellitePtr> satellites) {
    const auto name = [](const SatellitePtr& s) -> const std::string& { return s->name; };
    if (!std::ranges::is_sorted(satellites, {}, name)) {
        std::ranges::stable_sort(satellites, {}, name);
    }
    if (satellites == satellites_) {
        updateLooks();
        return;
    }
    beginResetModel();
    satellites_ = std::move(satellites);
    endResetModel();
}

void FavoritesModel::updateLooks() {
    if (rowCount() > 0) emit dataChanged(index(0), index(rowCount() - 1));
}

int FavoritesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(satellites_.size());
}

QVariant FavoritesModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::DisplayRole) return qText(satellite(index.row())->name);
    if (role == Qt::AccessibleTextRole) return qText(spokenFavorite(look(index.row())));
    return {};
}

FavoriteLook FavoritesModel::look(int row) const {
    const Satellite& shown = *satellite(row);
    const bool needsNames = std::ranges::any_of(
        shown.sources, [](const std::string& key) { return key.starts_with("user:"); });
    return favoriteLook(shown,
                        needsNames ? state_->userSources().load() : std::vector<UserTLESource>{},
                        state_->now());
}

}  // namespace veloran
