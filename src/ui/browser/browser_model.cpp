#include "ui/browser/browser_model.h"

#include <algorithm>
#include <utility>

#include "ui/q_text.h"

namespace veloran {

BrowserModel::BrowserModel(std::shared_ptr<AppState> state, QObject* parent)
    : QAbstractItemModel(parent), state_(std::move(state)) {
    refresh();
}

bool BrowserModel::refresh() {
    const bool otherCatalogue = catalogue_ != state_->satellites.get();
    if (otherCatalogue) {
        catalogue_ = state_->satellites;
        search_ = SatelliteSearch(sortedByName(catalogue_));
    }
    // The user's own groups come and go with their subscriptions.
    const bool otherGroups = subscribed_ != state_->subscribedCategories.get();
    if (otherGroups) subscribed_ = state_->subscribedCategories;
    const bool otherSelection = selectedIds_ != state_->selectedSatelliteIds.get();
    if (otherSelection) selectedIds_ = state_->selectedSatelliteIds;

    if (otherCatalogue || otherGroups) {
        makeRows();
    } else if (otherSelection) {
        countSelected();
        announceAll();
    }
    return otherCatalogue || otherSelection;
}

void BrowserModel::setSearch(const std::string& text) {
    if (text == searchText_) return;
    searchText_ = text;
    makeRows();
}

void BrowserModel::makeRows() {
    const std::vector<SatellitePtr> filtered = search_.matches(searchText_);
    std::vector<BrowserSection> sections =
        orderedCategories(filtered, state_->elements().categories());
    if (auto others = uncategorizedSats(filtered); !others.empty()) {
        sections.push_back({std::string(kUncategorizedKey), "Uncategorized", std::move(others)});
    }
    beginResetModel();
    filteredCount_ = filtered.size();
    sections_ = std::move(sections);
    countSelected();
    endResetModel();
}

void BrowserModel::countSelected() {
    selectedCounts_.clear();
    for (const BrowserSection& section : sections_) {
        selectedCounts_.push_back(static_cast<std::size_t>(std::ranges::count_if(
            section.sats, [](const SatellitePtr& s) { return s->isSelected.get(); })));
    }
}

void BrowserModel::announceAll() {
    if (sections_.empty()) return;
    announce(index(0, 0), index(rowCount() - 1, 0));
    for (int i = 0; i < rowCount(); ++i) {
        const QModelIndex heading = index(i, 0);
        announce(index(0, 0, heading), index(rowCount(heading) - 1, 0, heading));
    }
}

const BrowserSection& BrowserModel::section(const QModelIndex& index) const {
    const auto place = isSection(index) ? static_cast<std::size_t>(index.row())
                                        : static_cast<std::size_t>(index.internalId() - 1);
    return sections_[place];
}

const SatellitePtr& BrowserModel::satellite(const QModelIndex& index) const {
    return section(index).sats[static_cast<std::size_t>(index.row())];
}

SectionLook BrowserModel::sectionLook(const QModelIndex& index) const {
    return veloran::sectionLook(
        section(index), selectedCounts_[static_cast<std::size_t>(index.row())], subscribed_);
}

SatelliteRowLook BrowserModel::satelliteLook(const QModelIndex& index) const {
    return satelliteRowLook(*satellite(index), state_->now());
}

std::vector<QModelIndex> BrowserModel::findSections(const std::string& key) const {
    std::vector<QModelIndex> found;
    for (int i = 0; i < rowCount(); ++i) {
        if (sections_[static_cast<std::size_t>(i)].key == key) found.push_back(index(i, 0));
    }
    return found;
}

QModelIndex BrowserModel::find(const std::string& key,
                               std::optional<std::int64_t> satelliteId) const {
    for (const QModelIndex& heading : findSections(key)) {
        if (!satelliteId) return heading;
        const auto& sats = section(heading).sats;
        const auto found =
            std::ranges::find(sats, *satelliteId, [](const auto& s) { return s->id; });
        if (found != sats.end()) return index(static_cast<int>(found - sats.begin()), 0, heading);
    }
    return {};
}

QModelIndex BrowserModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    // A satellite's index carries the number of its section, counted from 1.
    return createIndex(row, column,
                       parent.isValid() ? static_cast<quintptr>(parent.row() + 1) : quintptr{0});
}

QModelIndex BrowserModel::parent(const QModelIndex& index) const {
    if (!index.isValid() || isSection(index)) return {};
    return createIndex(static_cast<int>(index.internalId()) - 1, 0, quintptr{0});
}

int BrowserModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid()) return static_cast<int>(sections_.size());
    return isSection(parent) ? static_cast<int>(section(parent).sats.size()) : 0;
}

int BrowserModel::columnCount(const QModelIndex&) const {
    return 1;
}

bool BrowserModel::hasChildren(const QModelIndex& parent) const {
    return rowCount(parent) > 0;
}

Qt::ItemFlags BrowserModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    const Qt::ItemFlags all = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return isSection(index) ? all : all | Qt::ItemNeverHasChildren | Qt::ItemIsUserCheckable;
}

QVariant BrowserModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const bool heading = isSection(index);
    switch (role) {
        case Qt::DisplayRole:
            return qText(heading ? section(index).label : satellite(index)->name);
        case Qt::AccessibleTextRole:
            return qText(heading ? spokenSection(sectionLook(index))
                                 : spokenSatelliteRow(satelliteLook(index)));
        case Qt::CheckStateRole:
            if (heading) return {};
            return satellite(index)->isSelected ? Qt::Checked : Qt::Unchecked;
        default:
            return {};
    }
}

}  // namespace veloran
