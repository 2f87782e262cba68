#pragma once

#include <QAbstractListModel>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "core/app_state.h"
#include "ui/pass_list/pass_rows.h"

namespace veloran {

/// The coming passes of the favourites as rows.
class PassListModel : public QAbstractListModel {
    Q_OBJECT
  public:
    explicit PassListModel(std::shared_ptr<AppState> state, QObject* parent = nullptr);

    /// Reads the state; the rows are made anew only when a pass list or the favourites have
    /// changed. Cheap when nothing has.
    void refresh();
    /// Lets the rows that look different at the present moment be drawn again.
    void updateTimes();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    const PassRow& row(int index) const { return rows_[static_cast<std::size_t>(index)]; }
    PassRowLook look(int index) const;
    /// The row of the same pass after it was computed anew, which may move its ends: a pass under
    /// way then begins with the search. Passes of one satellite do not overlap.
    std::optional<int> findPass(std::int64_t satelliteId, Instant riseTime, Instant setTime) const;

  private:
    /// What the rows were made from.
    struct Source {
        SatellitePtr satellite;
        std::shared_ptr<const PassList> list;
    };

    bool areSourcesAsShown() const;
    void readSources();
    std::vector<RowMoment> momentsNow() const;

    std::shared_ptr<AppState> state_;
    std::vector<Source> sources_;
    std::vector<PassRow> rows_;
    std::vector<RowMoment> moments_;  ///< of each row, as last shown
    std::optional<UniqueId> selected_;
    QueueIds queued_;
};

}  // namespace veloran
