#pragma once

#include <QStyledItemDelegate>

namespace veloran {

class PassListModel;

/// Paints the rows of the pass list; there is no widget per row.
class PassRowDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    explicit PassRowDelegate(const PassListModel& model, QObject* parent = nullptr)
        : QStyledItemDelegate(parent), model_(model) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

    /// Where a click meets the queue's mark of a row that stands in `row`: the mark and the space
    /// round it.
    static QRect queueMarkArea(const QRect& row);

  private:
    const PassListModel& model_;
};

}  // namespace veloran
