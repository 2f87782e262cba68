#pragma once

#include <QAbstractItemModel>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/app_state.h"
#include "ui/browser/browser_rows.h"

namespace veloran {

/// The sections of the browser, and below each of them its satellites. A satellite of several
/// groups stands in each of them.
class BrowserModel : public QAbstractItemModel {
    Q_OBJECT
  public:
    explicit BrowserModel(std::shared_ptr<AppState> state, QObject* parent = nullptr);

    /// Reads the state and tells whether another catalogue or selection was found. The rows are
    /// made anew only for another catalogue or other groups.
    bool refresh();
    void setSearch(const std::string& text);
    std::size_t filteredCount() const { return filteredCount_; }

    bool isSection(const QModelIndex& index) const { return index.internalId() == 0; }
    /// The section that a row is, or stands in.
    const BrowserSection& section(const QModelIndex& index) const;
    const SatellitePtr& satellite(const QModelIndex& index) const;
    SectionLook sectionLook(const QModelIndex& index) const;
    SatelliteRowLook satelliteLook(const QModelIndex& index) const;
    /// All sections of a key, of which there may be several.
    std::vector<QModelIndex> findSections(const std::string& key) const;
    /// The satellite in the first section of that key that holds it; the section itself without an
    /// id. Invalid if there is none.
    QModelIndex find(const std::string& key, std::optional<std::int64_t> satelliteId) const;
    /// Has the rows between two of the same section drawn again.
    void announce(const QModelIndex& first, const QModelIndex& last) {
        emit dataChanged(first, last);
    }

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    void makeRows();
    void countSelected();
    void announceAll();

    std::shared_ptr<AppState> state_;
    std::vector<SatellitePtr> catalogue_;  ///< as last read
    std::set<std::string> subscribed_;
    std::set<std::int64_t> selectedIds_;
    SatelliteSearch search_;
    std::string searchText_;
    std::size_t filteredCount_ = 0;
    std::vector<BrowserSection> sections_;
    std::vector<std::size_t> selectedCounts_;  ///< of each section
};

}  // namespace veloran
