#pragma once

#include <QAbstractListModel>
#include <QListView>
#include <QStyledItemDelegate>
#include <vector>

#include "core/satellite.h"

namespace veloran {

/// The tracked satellites by name.
class TrackedModel : public QAbstractListModel {
    Q_OBJECT
  public:
    using QAbstractListModel::QAbstractListModel;

    void setSatellites(std::vector<SatellitePtr> satellites);
    const SatellitePtr& satellite(int row) const {
        return satellites_[static_cast<std::size_t>(row)];
    }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    std::vector<SatellitePtr> satellites_;
};

/// Where the columns of a row lie.
struct TrackedColumns {
    QRect dot, name, remove;
};
TrackedColumns trackedColumns(const QRect& row);

class TrackedRowDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    explicit TrackedRowDelegate(const TrackedModel& model, QObject* parent = nullptr)
        : QStyledItemDelegate(parent), model_(model) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
    QString helpAt(const QPoint& at, const QRect& row, const QModelIndex& index) const;

  private:
    const TrackedModel& model_;
};

/// The rows of the tracked satellites. It stays near the row it was on when that one is taken away.
class TrackedList : public QListView {
    Q_OBJECT
  public:
    explicit TrackedList(TrackedModel& model, QWidget* parent = nullptr);

  signals:
    /// By a click on a row's cross, or Delete on the current row.
    void removed(const veloran::SatellitePtr& satellite);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

  private:
    /// The row whose cross lies there.
    QModelIndex crossAt(const QPoint& at) const;
    void rememberPlace();
    void restorePlace();

    const TrackedModel& model_;
    QPersistentModelIndex pressed_;
    int currentRow_ = -1;
    int scrolled_ = 0;
};

}  // namespace veloran
