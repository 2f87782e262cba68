#pragma once

#include <QStyledItemDelegate>

#include "ui/browser/browser_columns.h"

namespace veloran {

class BrowserModel;

/// Paints the rows of the browser, with their buttons; there is no widget per row.
class BrowserRowDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    explicit BrowserRowDelegate(const BrowserModel& model, QObject* parent = nullptr)
        : QStyledItemDelegate(parent), model_(model) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Clicks are the view's business.
    bool editorEvent(QEvent*, QAbstractItemModel*, const QStyleOptionViewItem&,
                     const QModelIndex&) override {
        return false;
    }
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

    /// Which button lies at a point of the row.
    RowPart partAt(const QPoint& at, const QRect& row, const QModelIndex& index) const;
    /// What the pointer resting there is told.
    QString helpAt(const QPoint& at, const QRect& row, const QModelIndex& index) const;
    /// The button below the pointer, which is underlined.
    void setHovered(const QModelIndex& index, RowPart part);

  private:
    void paintSection(QPainter& painter, const QRect& row, const QModelIndex& index,
                      bool isOpen) const;
    void paintSatellite(QPainter& painter, const QRect& row, const QModelIndex& index) const;
    QString satelliteHelpAt(const QPoint& at, const QRect& row, const QModelIndex& index) const;
    QString sectionHelpAt(const QPoint& at, const QRect& row, const QModelIndex& index) const;

    const BrowserModel& model_;
    QPersistentModelIndex hovered_;
    RowPart hoveredPart_ = RowPart::nothing;
};

}  // namespace veloran
