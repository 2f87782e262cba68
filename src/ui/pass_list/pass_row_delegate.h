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

  private:
    const PassListModel& model_;
};

}  // namespace veloran
