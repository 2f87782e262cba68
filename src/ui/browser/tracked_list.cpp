#include "ui/browser/tracked_list.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "core/satellite_preferences.h"
#include "ui/q_text.h"
#include "ui/symbol_icon.h"
#include "ui/theme.h"
#include "ui/widgets/fitted_text.h"
#include "ui/widgets/plain_rows.h"
#include "ui/widgets/row_painting.h"

namespace veloran {

namespace {

constexpr int kListPadding = 4;
constexpr int kHorizontalPadding = 10;
constexpr int kVerticalPadding = 3;
constexpr int kSpacing = 6;
constexpr int kDot = 8;
constexpr int kCross = 11;
constexpr int kNamePixels = 11;

}  // namespace

void TrackedModel::setSatellites(std::vector<SatellitePtr> satellites) {
    if (satellites == satellites_) return;
    beginResetModel();
    satellites_ = std::move(satellites);
    endResetModel();
}

int TrackedModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(satellites_.size());
}

QVariant TrackedModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) return {};
    const Satellite& shown = *satellite(index.row());
    if (role == Qt::DisplayRole) return qText(shown.name);
    return qText(shown.name + ", NORAD " + std::to_string(shown.id));
}

TrackedColumns trackedColumns(const QRect& row) {
    const QRect content =
        row.adjusted(kListPadding + kHorizontalPadding, 0, -kListPadding - kHorizontalPadding, 0);
    const int nameLeft = content.left() + kDot + kSpacing;
    const int crossLeft = content.right() + 1 - kCross;
    return {
        .dot = {content.left(), row.top(), kDot, row.height()},
        .name = {nameLeft, row.top(), std::max(0, crossLeft - kSpacing - nameLeft), row.height()},
        .remove = {crossLeft, row.top(), kCross, row.height()}};
}

QSize TrackedRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    const int text = QFontMetrics(Theme::face(kNamePixels)).height();
    return {0, std::max(text, kCross) + 2 * kVerticalPadding};
}

void TrackedRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
    const Satellite& shown = *model_.satellite(index.row());
    const TrackedColumns columns = trackedColumns(option.rect);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(Theme::color(SatelliteColorPalette::color(shown.id)));
    painter->drawEllipse(middleSquare(columns.dot, kDot));
    drawRowText(
        *painter, columns.name,
        {qText(shown.name), Theme::face(kNamePixels), {Ink::primary}, Qt::AlignLeft, kNamePixels},
        Theme::color(Ink::control));
    paintSymbol(*painter, middleSquare(columns.remove, kCross), Symbol::crossDisc,
                Theme::color(Ink::red, 0.7));
    if (option.state & QStyle::State_HasFocus) drawRowFocus(*painter, option.rect);
    painter->restore();
}

QString TrackedRowDelegate::helpAt(const QPoint& at, const QRect& row,
                                   const QModelIndex& index) const {
    const TrackedColumns columns = trackedColumns(row);
    if (columns.remove.contains(at)) return tr("Remove from tracked list");
    const QString name = qText(model_.satellite(index.row())->name);
    const bool tells =
        columns.name.contains(at) && isCut(Theme::face(kNamePixels), name, columns.name.width());
    return tells ? name : QString();
}

bool TrackedRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                   const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    showRowHelp(*event, view, helpAt(event->pos(), option.rect, index));
    return true;
}

TrackedList::TrackedList(TrackedModel& model, QWidget* parent) : QListView(parent), model_(model) {
    setObjectName("trackedSatellites");
    setAccessibleName(tr("Tracked satellites"));
    setAccessibleDescription(tr("Delete removes the satellite from the tracked list."));
    makePlainRows(*this);
    setUniformItemSizes(true);
    viewport()->setMouseTracking(true);
    connect(&model, &TrackedModel::modelAboutToBeReset, this, &TrackedList::rememberPlace);
    setModel(&model);
    setItemDelegate(new TrackedRowDelegate(model, this));
    connect(&model, &TrackedModel::modelReset, this, &TrackedList::restorePlace);
}

void TrackedList::rememberPlace() {
    pressed_ = QModelIndex();
    currentRow_ = currentIndex().row();
    scrolled_ = verticalScrollBar()->value();
}

void TrackedList::restorePlace() {
    doItemsLayout();
    const int row = std::min(currentRow_, model_.rowCount() - 1);
    if (row >= 0) {
        selectionModel()->setCurrentIndex(model_.index(row), QItemSelectionModel::NoUpdate);
    }
    verticalScrollBar()->setValue(scrolled_);
}

QModelIndex TrackedList::crossAt(const QPoint& at) const {
    const QModelIndex index = indexAt(at);
    const bool isCross =
        index.isValid() &&
        trackedColumns(visualRect(index)).remove.adjusted(-3, 0, 3, 0).contains(at);
    return isCross ? index : QModelIndex();
}

void TrackedList::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton ? crossAt(event->pos()) : QModelIndex();
    QListView::mousePressEvent(event);
}

void TrackedList::mouseReleaseEvent(QMouseEvent* event) {
    QListView::mouseReleaseEvent(event);
    const QModelIndex pressed = std::exchange(pressed_, QModelIndex());
    if (event->button() == Qt::LeftButton && pressed.isValid() &&
        crossAt(event->pos()) == pressed) {
        emit removed(model_.satellite(pressed.row()));
    }
}

void TrackedList::mouseMoveEvent(QMouseEvent* event) {
    viewport()->setCursor(crossAt(event->pos()).isValid() ? Qt::PointingHandCursor
                                                          : Qt::ArrowCursor);
    QListView::mouseMoveEvent(event);
}

void TrackedList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete && currentIndex().isValid()) {
        emit removed(model_.satellite(currentIndex().row()));
    } else {
        QListView::keyPressEvent(event);
    }
}

}  // namespace veloran
