#pragma once

#include <QStyledItemDelegate>

namespace veloran {

class FavoritesModel;

/// Where the columns of a row lie. Where room is short, the sources give way; without room they
/// are left out.
struct FavoriteColumns {
    QRect dot, name, sources, age, passes, channel, remove;
};
FavoriteColumns favoriteColumns(const QRect& row);

/// Paints the rows of the favourites; there is no widget per row.
class FavoriteRowDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    explicit FavoriteRowDelegate(const FavoritesModel& model, QObject* parent = nullptr)
        : QStyledItemDelegate(parent), model_(model) {}

    static int rowHeight();

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
    /// What the column at a point of the row says when the pointer rests there.
    QString helpAt(const QPoint& at, const QRect& rowArea, int row) const;

  private:
    const FavoritesModel& model_;
};

}  // namespace veloran
