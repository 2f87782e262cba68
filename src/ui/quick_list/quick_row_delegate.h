#pragma once

#include <QStyledItemDelegate>

namespace veloran {

class QuickListModel;

/// Where the parts of a row lie. A click on the check box or the texts beside it, its label,
/// selects.
struct QuickColumns {
    QRect check, label, frequency;
};
QuickColumns quickColumns(const QRect& row);

/// Paints the rows of the quick list; there is no widget per row.
class QuickRowDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    explicit QuickRowDelegate(const QuickListModel& model, QObject* parent = nullptr)
        : QStyledItemDelegate(parent), model_(model) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
    QString helpAt(const QPoint& at, const QRect& row, const QModelIndex& index) const;

  private:
    const QuickListModel& model_;
};

}  // namespace veloran
