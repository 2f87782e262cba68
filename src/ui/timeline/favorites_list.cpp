#include "ui/timeline/favorites_list.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/commands.h"
#include "ui/theme.h"
#include "ui/timeline/favorite_row_delegate.h"
#include "ui/timeline/favorites_model.h"
#include "ui/timeline/timeline_texts.h"
#include "ui/widgets/mini_button.h"
#include "ui/widgets/plain_rows.h"
#include "ui/widgets/prominent_button.h"
#include "ui/widgets/text_button.h"
#include "ui/widgets/value_label.h"

namespace veloran {

FavoriteRowsView::FavoriteRowsView(FavoritesModel& model, QWidget* parent) : QListView(parent) {
    setObjectName("favorites");
    setAccessibleName(tr("Favorites"));
    setAccessibleDescription(tr("Delete removes the satellite from the favorites."));
    makePlainRows(*this);
    setUniformItemSizes(true);
    viewport()->setBackgroundRole(QPalette::Window);
    viewport()->setMouseTracking(true);
    setModel(&model);
    setItemDelegate(new FavoriteRowDelegate(model, this));
    connect(this, &QListView::clicked, this, &FavoriteRowsView::onClicked);
}

bool FavoriteRowsView::isOnCross(const QPoint& at) const {
    const QModelIndex index = indexAt(at);
    return index.isValid() && favoriteColumns(visualRect(index)).remove.contains(at);
}

void FavoriteRowsView::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->pos();
    QListView::mousePressEvent(event);
}

void FavoriteRowsView::mouseMoveEvent(QMouseEvent* event) {
    viewport()->setCursor(isOnCross(event->pos()) ? Qt::PointingHandCursor : Qt::ArrowCursor);
    QListView::mouseMoveEvent(event);
}

void FavoriteRowsView::onClicked(const QModelIndex& index) {
    if (favoriteColumns(visualRect(index)).remove.contains(pressed_)) emit removed(index);
}

void FavoriteRowsView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete && currentIndex().isValid()) {
        emit removed(currentIndex());
    } else {
        QListView::keyPressEvent(event);
    }
}

FavoritesList::FavoritesList(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent),
      state_(std::move(state)),
      model_(new FavoritesModel(state_, this)),
      header_(makeHeader()),
      hint_(makeHint()),
      rows_(new FavoriteRowsView(*model_, this)) {
    connect(rows_, &FavoriteRowsView::removed, this, &FavoritesList::remove);
    refresh();
}

void FavoritesList::setSatellites(std::vector<SatellitePtr> satellites) {
    model_->setSatellites(std::move(satellites));
}

void FavoritesList::refresh() {
    const std::size_t count = state_->selectedSatelliteIds->size();
    count_->setText(countText(count));
    clear_->setVisible(count > 0);
    arrange();
}

void FavoritesList::updateLooks() {
    model_->updateLooks();
}

void FavoritesList::remove(const QModelIndex& index) {
    const SatellitePtr satellite = model_->satellite(index.row());
    state_->toggleSatellite(satellite);
}

QWidget* FavoritesList::makeHeader() {
    auto* header = new QWidget(this);
    count_ = new ValueLabel({13, QFont::Normal, Ink::secondary, 1, false});
    count_->setObjectName("favoritesListCount");
    auto* browse = new MiniButton(Symbol::plusSquare, 15, tr("Add / Browse"),
                                  {14, QFont::Medium, Ink::primary}, 3);
    browse->setObjectName("addFavorites");
    browse->setToolTip(tr("Open the Satellite Browser (Ctrl+B) to add or remove favorites"));
    connect(browse, &QAbstractButton::clicked, this, &FavoritesList::browserRequested);
    clear_ = new TextButton(tr("Clear"), {14, QFont::Medium, Ink::red, 0.8});
    clear_->setObjectName("clearFavorites");
    clear_->setAccessibleName(tr("Clear the favorites"));
    clear_->setToolTip(tr("Remove all satellites from the favorites list"));
    connect(clear_, &QAbstractButton::clicked, this, [this] { deselectAll(*state_); });

    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(8, 4, 8, 2);
    row->setSpacing(8);
    row->addWidget(new ValueLabel({14, QFont::Black, Ink::secondary}, tr("FAVORITES")));
    row->addWidget(count_);
    row->addStretch();
    row->addWidget(browse);
    row->addWidget(clear_);
    return header;
}

QWidget* FavoritesList::makeHint() {
    auto* hint = new QWidget(this);
    hint->setObjectName("emptyFavoritesHint");
    auto* browse = new ProminentButton(tr("Open Satellite Browser"), Ink::blue);
    browse->setObjectName("openBrowser");
    browse->setAccessibleName(browse->text());
    browse->setIcon(symbolIcon(Symbol::plusSquare, Ink::control));
    browse->setIconSize({15, 15});
    browse->setAutoDefault(false);
    connect(browse, &QAbstractButton::clicked, this, &FavoritesList::browserRequested);

    auto* column = new QVBoxLayout(hint);
    column->setContentsMargins(0, 16, 0, 16);
    column->setSpacing(6);
    column->addWidget(
        new ValueLabel({16, QFont::Normal, Ink::secondary}, tr("No favorite satellites yet")), 0,
        Qt::AlignHCenter);
    column->addWidget(browse, 0, Qt::AlignHCenter);
    return hint;
}

int FavoritesList::headerHeight() const {
    return header_->sizeHint().height();
}

int FavoritesList::contentHeight() const {
    if (state_->selectedSatelliteIds->empty()) return hint_->sizeHint().height();
    return std::min(kGreatestRowsHeight, model_->rowCount() * FavoriteRowDelegate::rowHeight());
}

int FavoritesList::leastContentHeight() const {
    if (state_->selectedSatelliteIds->empty()) return contentHeight();
    constexpr int kLeastRows = 2;
    return std::min(contentHeight(), kLeastRows * FavoriteRowDelegate::rowHeight());
}

int FavoritesList::heightIn(int room, int leastAbove) const {
    const int left = room - leastAbove;
    if (left < headerHeight()) return 0;
    const int most = headerHeight() + contentHeight();
    const int least = headerHeight() + leastContentHeight();
    return std::min({left, most, std::max(least, room / 2)});
}

void FavoritesList::resizeEvent(QResizeEvent*) {
    arrange();
}

void FavoritesList::arrange() {
    const bool isEmpty = state_->selectedSatelliteIds->empty();
    const QRect below(0, headerHeight(), width(), std::max(0, height() - headerHeight()));
    header_->setGeometry(0, 0, width(), headerHeight());
    hint_->setGeometry(below);
    rows_->setGeometry(below);
    // A hint that is cut would be none.
    hint_->setVisible(isEmpty && below.height() >= hint_->sizeHint().height());
    rows_->setVisible(!isEmpty && !below.isEmpty());
}

}  // namespace veloran
