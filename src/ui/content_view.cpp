#include "ui/content_view.h"

#include <QSplitter>
#include <QVBoxLayout>

#include "ui/detail/detail_panel.h"
#include "ui/pass_list/pass_list_view.h"
#include "ui/state_refresher.h"
#include "ui/title_bar.h"
#include "ui/widgets/divider.h"

namespace veloran {

ContentView::ContentView(std::shared_ptr<AppState> state, const StateRefresher& refresher,
                         QWidget* parent)
    : QWidget(parent), state_(std::move(state)) {
    setMinimumSize(1050, 700);
    auto* titleBar = new TitleBar(state_);
    auto* detailPanel = new DetailPanel(state_);
    connect(&refresher, &StateRefresher::refresh, titleBar, &TitleBar::refresh);
    connect(&refresher, &StateRefresher::refresh, detailPanel, &DetailPanel::refresh);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(titleBar);
    column->addWidget(new Divider(Qt::Horizontal));
    column->addWidget(makePanes(refresher), 1);
    column->addWidget(new Divider(Qt::Horizontal));
    column->addWidget(detailPanel);
}

void ContentView::paintEvent(QPaintEvent*) {
    if (hasAppeared_) return;
    hasAppeared_ = true;
    QMetaObject::invokeMethod(this, &ContentView::firstAppearance, Qt::QueuedConnection);
}

QWidget* ContentView::makePanes(const StateRefresher& refresher) {
    auto* passList = new PassListView(state_);
    passList->setMinimumHeight(120);
    connect(&refresher, &StateRefresher::refresh, passList, &PassListView::refresh);

    auto* left = new QSplitter(Qt::Vertical);
    left->setChildrenCollapsible(false);
    left->setMinimumWidth(450);
    left->addWidget(passList);

    auto* panes = new QSplitter(Qt::Horizontal);
    panes->setChildrenCollapsible(false);
    panes->setMinimumHeight(300);
    panes->addWidget(left);
    return panes;
}

void ContentView::firstAppearance() {
    // A tenth of the span of the timeline lies in the past.
    constexpr double kPastShare = 0.1;
    constexpr double kSecondsPerHour = 3600;
    state_->timelineStartTime =
        state_->now() - state_->timelineHoursVisible * kPastShare * kSecondsPerHour;
    state_->loadData();
}

}  // namespace veloran
