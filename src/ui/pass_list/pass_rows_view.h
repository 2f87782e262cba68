#pragma once

#include <QListView>
#include <optional>

#include "base/instant.h"

namespace veloran {

class PassListModel;

/// The scrolling rows: stays where it is, and on the row it was on, when the passes are computed
/// anew.
class PassRowsView : public QListView {
    Q_OBJECT
  public:
    explicit PassRowsView(PassListModel& model, QWidget* parent = nullptr);

  signals:
    /// By a click, or Enter or Space on the current row.
    void picked(const QModelIndex& index);
    /// By a click on the row's mark, or Q on the current row.
    void queueToggled(const QModelIndex& index);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    /// A row and its pass, and how far its top is above the top of the view.
    struct Place {
        int row;
        std::int64_t satelliteId;
        Instant riseTime;
        Instant setTime;
        int offset;
    };
    std::optional<Place> placeOf(const QModelIndex& index) const;
    void rememberPlace();
    void restorePlace();

    void onClicked(const QModelIndex& index);

    PassListModel& model_;
    QPoint pressed_;
    int scrolled_ = 0;
    std::optional<Place> top_;
    std::optional<Place> current_;
};

}  // namespace veloran
