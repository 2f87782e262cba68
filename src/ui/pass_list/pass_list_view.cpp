#include "ui/pass_list/pass_list_view.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/commands.h"
#include "ui/formats.h"
#include "ui/pass_list/pass_list_model.h"
#include "ui/pass_list/pass_row_delegate.h"
#include "ui/pass_list/pass_rows_view.h"
#include "ui/pass_list/queue_texts.h"
#include "ui/q_text.h"
#include "ui/theme.h"
#include "ui/widgets/badge.h"
#include "ui/widgets/fitted_text.h"
#include "ui/widgets/text_button.h"
#include "ui/widgets/value_label.h"

namespace veloran {

PassListView::PassListView(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent),
      state_(std::move(state)),
      model_(new PassListModel(state_, this)),
      rows_(new PassRowsView(*model_)),
      conflict_(state_, *this) {
    rows_->setItemDelegate(new PassRowDelegate(*model_, rows_));
    connect(rows_, &PassRowsView::picked, this, &PassListView::select);
    connect(rows_, &PassRowsView::queueToggled, this, &PassListView::toggleQueue);
    connect(&everySecond_, &LoopTimer::timeout, this, &PassListView::describeMoment);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeHeader());
    column->addWidget(rows_, 1);
    refresh();
}

void PassListView::refresh() {
    model_->refresh();
    count_->setText(upcomingText(static_cast<std::size_t>(model_->rowCount())));
    const std::size_t queued = state_->queuedPassIds->size();
    queued_->display(QString::fromStdString(queuedBadge(queued)), Ink::cyan);
    queued_->setVisible(queued > 0);
    clear_->setVisible(queued > 0);
    if (described_ != state_->queuedPassIds.get()) describeQueue();
    conflict_.refresh();
}

void PassListView::describeMoment() {
    model_->updateTimes();
    describeQueue();
}

/// What becomes of each entry, those without a row included.
void PassListView::describeQueue() {
    described_ = state_->queuedPassIds;
    if (described_.empty()) return;
    const auto nameOf = [this](std::int64_t number) {
        const auto found = std::ranges::find(state_->satellites.get(), number, &Satellite::id);
        return found == state_->satellites->end() ? std::string() : (*found)->name;
    };
    const QString help = qText(queueHelp(state_->queueEntries(), nameOf));
    queued_->setToolTip(plainToolTip(help.split('\n')));
    queued_->setAccessibleDescription(help);
}

void PassListView::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Theme::color(Ink::control));
}

void PassListView::showEvent(QShowEvent*) {
    describeMoment();
    everySecond_.start();
}

void PassListView::hideEvent(QHideEvent*) {
    everySecond_.stop();
}

QWidget* PassListView::makeHeader() {
    auto* header = new QWidget;
    header->setAutoFillBackground(true);
    count_ = new ValueLabel({14, QFont::Normal, Ink::secondary});
    count_->setObjectName("passCount");
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(10, 6, 10, 6);
    row->setSpacing(9);
    row->addWidget(new ValueLabel({15, QFont::Black, Ink::secondary}, tr("PASSES")));
    row->addStretch();
    queued_ = new Badge({.pixels = 13,
                         .horizontalPadding = 5,
                         .cornerRadius = 3,
                         .outlineOpacity = 0.6,
                         .weight = QFont::Black});
    queued_->setObjectName("queuedBadge");
    row->addWidget(queued_);
    clear_ = new TextButton(tr("Clear"), {12, QFont::Normal, Ink::red, 0.8, false});
    clear_->setObjectName("clearQueue");
    clear_->setAccessibleName(tr("Clear the auto-track queue"));
    connect(clear_, &QAbstractButton::clicked, this, [this] { state_->clearPassQueue(); });
    row->addWidget(clear_);
    row->addWidget(count_);
    return header;
}

void PassListView::toggleQueue(const QModelIndex& index) {
    const PassRow row = model_->row(index.row());
    state_->togglePassQueued(row.satellite, row.pass());
}

void PassListView::select(const QModelIndex& index) {
    const PassRow row = model_->row(index.row());
    selectPass(*state_, row.satellite, row.pass());
}

}  // namespace veloran
