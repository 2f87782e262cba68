#include "ui/pass_list/pass_rows_view.h"

#include <QKeyEvent>
#include <QScrollBar>

#include "ui/pass_list/pass_list_model.h"

namespace veloran {

PassRowsView::PassRowsView(PassListModel& model, QWidget* parent)
    : QListView(parent), model_(model) {
    setObjectName("passList");
    setAccessibleName(tr("Coming passes"));
    setFrameShape(QFrame::NoFrame);
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Before the view hears of the reset and forgets where it was.
    connect(&model, &PassListModel::modelAboutToBeReset, this, &PassRowsView::rememberPlace);
    setModel(&model);
    connect(&model, &PassListModel::modelReset, this, &PassRowsView::restorePlace);
    connect(this, &QListView::clicked, this, &PassRowsView::picked);
}

void PassRowsView::keyPressEvent(QKeyEvent* event) {
    const bool picks = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                       event->key() == Qt::Key_Space;
    if (picks && currentIndex().isValid()) {
        emit picked(currentIndex());
    } else {
        QListView::keyPressEvent(event);
    }
}

std::optional<PassRowsView::Place> PassRowsView::placeOf(const QModelIndex& index) const {
    if (!index.isValid()) return std::nullopt;
    const PassRow& row = model_.row(index.row());
    return Place{row.satellite->id, row.pass().riseTime, -visualRect(index).top()};
}

void PassRowsView::rememberPlace() {
    // A list that shows its beginning goes on showing it, whichever pass that now is.
    top_ = verticalScrollBar()->value() == 0 ? std::nullopt : placeOf(indexAt({0, 0}));
    current_ = placeOf(currentIndex());
}

void PassRowsView::restorePlace() {
    const auto rowOf = [this](const std::optional<Place>& place) {
        return place ? model_.findPass(place->satelliteId, place->riseTime) : std::nullopt;
    };
    doItemsLayout();
    if (const auto row = rowOf(current_)) {
        selectionModel()->setCurrentIndex(model_.index(*row), QItemSelectionModel::NoUpdate);
    }
    if (const auto row = rowOf(top_)) {
        verticalScrollBar()->setValue(*row * sizeHintForRow(*row) + top_->offset);
    } else {
        verticalScrollBar()->setValue(0);
    }
}

}  // namespace veloran
