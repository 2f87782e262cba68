#pragma once

#include <QAbstractListModel>
#include <memory>
#include <string>
#include <vector>

#include "core/app_state.h"
#include "ui/browser/browser_lists.h"

namespace veloran {

/// What a row of the quick list shows; a text with nothing to show is empty.
struct QuickListLook {
    bool isSelected = false;
    std::string name;
    std::string norad;
    std::string channels;
    std::string passes;
    std::string frequency;
    bool operator==(const QuickListLook&) const = default;
};
QuickListLook quickListLook(const Satellite& satellite);
/// The row in words, for a screen reader, which tells the check mark itself.
std::string spokenQuickRow(const QuickListLook& look);

/// The bodies in the order of the state, those that match a search. The check mark selects.
class QuickListModel : public QAbstractListModel {
    Q_OBJECT
  public:
    explicit QuickListModel(std::shared_ptr<AppState> state, QObject* parent = nullptr);

    void setSearch(const QString& text);
    /// Takes the bodies of the state when they are others than before.
    void refresh();

    int rowCount(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    const SatellitePtr& satellite(int row) const {
        return filtered_[static_cast<std::size_t>(row)];
    }
    QuickListLook look(int row) const { return quickListLook(*satellite(row)); }

  private:
    void filter();

    std::shared_ptr<AppState> state_;
    std::string searchText_;
    SatelliteSearch search_;
    std::vector<SatellitePtr> filtered_;
};

}  // namespace veloran
