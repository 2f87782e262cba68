#include "ui/browser/browser_tree.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>

#include "ui/browser/browser_model.h"
#include "ui/browser/browser_row_delegate.h"
#include "ui/q_text.h"
#include "ui/widgets/plain_rows.h"

namespace veloran {

BrowserTree::BrowserTree(BrowserModel& model, QWidget* parent)
    : QTreeView(parent), model_(model), delegate_(new BrowserRowDelegate(model, this)) {
    setObjectName("availableSatellites");
    setAccessibleName(tr("Available satellites"));
    setAccessibleDescription(
        tr("Letters go to the search. Space tracks a satellite or no longer does, Enter shows its "
           "details, Delete removes an imported one. On a group, Enter opens or closes it, Ctrl+A "
           "tracks all of it, Ctrl+Shift+A none of it, Ctrl+S subscribes or unsubscribes, "
           "Ctrl+Delete removes all imported satellites. The Menu key tells what a row can do."));
    makePlainRows(*this);
    setHeaderHidden(true);
    setRootIsDecorated(false);
    setIndentation(0);
    setUniformRowHeights(true);
    setExpandsOnDoubleClick(false);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setBackgroundRole(QPalette::Window);
    viewport()->setMouseTracking(true);
    // Before the view hears of the reset and forgets where it was.
    connect(&model, &BrowserModel::modelAboutToBeReset, this, &BrowserTree::rememberPlace);
    setModel(&model);
    setItemDelegate(delegate_);
    connect(&model, &BrowserModel::modelReset, this, &BrowserTree::restorePlace);
    connect(this, &QTreeView::expanded, this,
            [this](const QModelIndex& section) { keepExpansion(section, true); });
    connect(this, &QTreeView::collapsed, this,
            [this](const QModelIndex& section) { keepExpansion(section, false); });
    restorePlace();
}

void BrowserTree::toggleExpanded(const QModelIndex& section) {
    setExpanded(section, !isExpanded(section));
}

/// Sections of one key open and close together.
void BrowserTree::keepExpansion(const QModelIndex& section, bool isOpen) {
    const std::string key = model_.section(section).key;
    if (isOpen) {
        expandedCategories_.insert(key);
    } else {
        expandedCategories_.erase(key);
    }
    for (const QModelIndex& same : model_.findSections(key)) setExpanded(same, isOpen);
}

std::optional<BrowserTree::Place> BrowserTree::placeOf(const QModelIndex& index) const {
    if (!index.isValid()) return std::nullopt;
    const auto id =
        model_.isSection(index) ? std::nullopt : std::optional(model_.satellite(index)->id);
    return Place{model_.section(index).key, id, -visualRect(index).top()};
}

QModelIndex BrowserTree::indexOf(const std::optional<Place>& place) const {
    return place ? model_.find(place->key, place->satelliteId) : QModelIndex();
}

void BrowserTree::rememberPlace() {
    hover({});
    pressed_ = {};
    scrolled_ = verticalScrollBar()->value();
    top_ = scrolled_ == 0 ? std::nullopt : placeOf(indexAt({0, 0}));
    current_ = placeOf(currentIndex());
}

void BrowserTree::restorePlace() {
    for (const std::string& key : expandedCategories_) {
        for (const QModelIndex& section : model_.findSections(key)) setExpanded(section, true);
    }
    doItemsLayout();
    if (const QModelIndex current = indexOf(current_); current.isValid()) {
        selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    }
    QScrollBar& bar = *verticalScrollBar();
    const QModelIndex top = indexOf(top_);
    bar.setValue(top.isValid() ? bar.value() + visualRect(top).top() + top_->offset : scrolled_);
}

void BrowserTree::showFound() {
    if (currentIndex().isValid()) {
        scrollTo(currentIndex());
    } else {
        scrollToTop();
    }
}

void BrowserTree::enter() {
    setFocus();
    if (!currentIndex().isValid() && model_.rowCount() > 0) setCurrentIndex(model_.index(0, 0));
}

BrowserTree::RowLook BrowserTree::lookOf(const QModelIndex& index) const {
    if (model_.isSection(index)) return model_.sectionLook(index);
    return model_.satelliteLook(index);
}

void BrowserTree::updateVisibleRows() {
    std::size_t row = 0;
    for (QModelIndex index = indexAt({0, 0}); index.isValid(); index = indexBelow(index)) {
        if (visualRect(index).top() >= viewport()->height()) break;
        const RowLook look = lookOf(index);
        if (row == visibleLooks_.size()) {
            visibleLooks_.push_back(look);
        } else if (visibleLooks_[row] != look) {
            visibleLooks_[row] = look;
            model_.announce(index, index);
        }
        ++row;
    }
    visibleLooks_.resize(row);
}

BrowserTree::Button BrowserTree::buttonAt(const QPoint& at) const {
    const QModelIndex index = indexAt(at);
    if (!index.isValid()) return {};
    return {index, delegate_->partAt(at, visualRect(index), index)};
}

void BrowserTree::hover(const Button& button) {
    if (button == hovered_) return;
    if (hovered_.index.isValid()) update(hovered_.index);
    hovered_ = button;
    delegate_->setHovered(button.index, button.part);
    if (hovered_.index.isValid()) update(hovered_.index);
    viewport()->setCursor(button.part == RowPart::nothing ? Qt::ArrowCursor
                                                          : Qt::PointingHandCursor);
}

void BrowserTree::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton ? buttonAt(event->pos()) : Button{};
    QTreeView::mousePressEvent(event);
}

/// Each click of a quick series counts, as it does on any button.
void BrowserTree::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void BrowserTree::mouseReleaseEvent(QMouseEvent* event) {
    QTreeView::mouseReleaseEvent(event);
    const Button pressed = std::exchange(pressed_, {});
    if (event->button() != Qt::LeftButton || pressed.part == RowPart::nothing) return;
    if (buttonAt(event->pos()) == pressed) act(pressed.index, pressed.part);
}

void BrowserTree::mouseMoveEvent(QMouseEvent* event) {
    hover(buttonAt(event->pos()));
    QTreeView::mouseMoveEvent(event);
}

void BrowserTree::leaveEvent(QEvent* event) {
    hover({});
    QTreeView::leaveEvent(event);
}

void BrowserTree::act(const QModelIndex& index, RowPart part) {
    switch (part) {
        case RowPart::nothing:
            break;
        case RowPart::title:
            toggleExpanded(index);
            break;
        case RowPart::all:
            emit selectionRequested(index, true);
            break;
        case RowPart::none:
            emit selectionRequested(index, false);
            break;
        case RowPart::clear:
            emit clearRequested();
            break;
        case RowPart::subscription:
            emit subscriptionToggled(model_.section(index).key);
            break;
        case RowPart::checkBox:
            emit toggled(model_.satellite(index));
            break;
        case RowPart::details:
            emit detailsRequested(model_.satellite(index));
            break;
        case RowPart::remove:
            emit removalRequested(model_.satellite(index));
            break;
    }
}

RowPart BrowserTree::partOfKey(const QKeyEvent& event, const QModelIndex& index) const {
    if (!index.isValid()) return RowPart::nothing;
    if (model_.isSection(index)) return sectionPartOfKey(event, model_.sectionLook(index));
    return satellitePartOfKey(event, model_.section(index).key == kCustomKey);
}

void BrowserTree::keyPressEvent(QKeyEvent* event) {
    const RowPart part = partOfKey(*event, currentIndex());
    if (part != RowPart::nothing) {
        if (!event->isAutoRepeat()) act(currentIndex(), part);
    } else if (isTyping(*event)) {
        emit typed(*event);
    } else {
        QTreeView::keyPressEvent(event);
    }
}

std::vector<MenuEntry> BrowserTree::menuOf(const QModelIndex& index) const {
    if (model_.isSection(index)) return sectionMenu(model_.sectionLook(index), isExpanded(index));
    const bool isImported = model_.satellite(index)->sources.contains(std::string(kCustomKey));
    return satelliteMenu(model_.satelliteLook(index), isImported);
}

void BrowserTree::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QPersistentModelIndex index = byKey ? currentIndex() : indexAt(event->pos());
    if (!index.isValid()) return;
    auto* menu = new QMenu(this);
    menu->setObjectName("browserRowMenu");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const MenuEntry& entry : menuOf(index)) {
        // The rows may be made anew while the menu is open.
        menu->addAction(qText(entry.text), this, [this, index, part = entry.part] {
            if (index.isValid()) act(index, part);
        });
    }
    menu->popup(byKey ? viewport()->mapToGlobal(visualRect(index).center()) : event->globalPos());
}

}  // namespace veloran
