#include "ui/pass_list/pass_rows_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>

#include "ui/pass_list/pass_list_model.h"
#include "ui/pass_list/pass_row_delegate.h"
#include "ui/widgets/plain_rows.h"

namespace veloran {

PassRowsView::PassRowsView(PassListModel& model, QWidget* parent)
    : QListView(parent), model_(model) {
    setObjectName("passList");
    setAccessibleName(tr("Coming passes"));
    makePlainRows(*this);
    setUniformItemSizes(true);
    // Before the view hears of the reset and forgets where it was.
    connect(&model, &PassListModel::modelAboutToBeReset, this, &PassRowsView::rememberPlace);
    setModel(&model);
    connect(&model, &PassListModel::modelReset, this, &PassRowsView::restorePlace);
    connect(this, &QListView::clicked, this, &PassRowsView::onClicked);
    setAccessibleDescription(
        tr("Enter selects the pass, Q puts it into the auto-track queue or takes it out."));
}

void PassRowsView::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->pos();
    QListView::mousePressEvent(event);
}

void PassRowsView::onClicked(const QModelIndex& index) {
    if (PassRowDelegate::queueMarkArea(visualRect(index)).contains(pressed_)) {
        emit queueToggled(index);
    } else {
        emit picked(index);
    }
}

void PassRowsView::keyPressEvent(QKeyEvent* event) {
    const bool picks = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                       event->key() == Qt::Key_Space;
    if (picks && currentIndex().isValid()) {
        emit picked(currentIndex());
    } else if (event->key() == Qt::Key_Q && event->modifiers() == Qt::NoModifier &&
               currentIndex().isValid()) {
        emit queueToggled(currentIndex());
    } else {
        QListView::keyPressEvent(event);
    }
}

std::optional<PassRowsView::Place> PassRowsView::placeOf(const QModelIndex& index) const {
    if (!index.isValid()) return std::nullopt;
    const PassRow& row = model_.row(index.row());
    return Place{index.row(), row.satellite->id, row.pass().riseTime, row.pass().setTime,
                 -visualRect(index).top()};
}

void PassRowsView::rememberPlace() {
    scrolled_ = verticalScrollBar()->value();
    // A list that shows its beginning goes on showing it, whichever pass that now is.
    top_ = scrolled_ == 0 ? std::nullopt : placeOf(indexAt({0, 0}));
    current_ = placeOf(currentIndex());
}

void PassRowsView::restorePlace() {
    const auto rowOf = [this](const Place& place) {
        return model_.findPass(place.satelliteId, place.riseTime, place.setTime);
    };
    doItemsLayout();
    if (current_ && model_.rowCount() > 0) {
        const int row = rowOf(*current_).value_or(std::min(current_->row, model_.rowCount() - 1));
        selectionModel()->setCurrentIndex(model_.index(row), QItemSelectionModel::NoUpdate);
    }
    const auto top = top_ ? rowOf(*top_) : std::nullopt;
    verticalScrollBar()->setValue(top ? *top * sizeHintForRow(*top) + top_->offset : scrolled_);
}

}  // namespace veloran
