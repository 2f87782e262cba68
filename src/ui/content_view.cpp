#include "ui/content_view.h"

#include <QSplitter>
#include <QVBoxLayout>

#include "ui/detail/detail_panel.h"
#include "ui/map/satellite_map_view.h"
#include "ui/pass_list/pass_list_view.h"
#include "ui/second_timer.h"
#include "ui/sky_plot/polar_plot_view.h"
#include "ui/state_refresher.h"
#include "ui/timeline/sky_track_view.h"
#include "ui/title_bar.h"
#include "ui/widgets/divider.h"

namespace veloran {

namespace {

constexpr int kHandleWidth = 5;

QSplitter* makeSplitter(Qt::Orientation orientation, const char* name) {
    auto* splitter = new QSplitter(orientation);
    splitter->setObjectName(name);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(kHandleWidth);
    return splitter;
}

/// Sizes at first, and the shares in which the two parts grow.
void shareOut(QSplitter& splitter, int first, int second) {
    splitter.setStretchFactor(0, first);
    splitter.setStretchFactor(1, second);
    splitter.setSizes({first, second});
}

}  // namespace

ContentView::ContentView(std::shared_ptr<AppState> state, const StateRefresher& refresher,
                         QWidget* parent)
    : QWidget(parent), state_(std::move(state)) {
    setMinimumSize(1050, 700);
    auto* titleBar = new TitleBar(state_);
    auto* detailPanel = new DetailPanel(state_);
    connect(titleBar, &TitleBar::browserRequested, this, &ContentView::browserRequested);
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
    connect(&refresher, &StateRefresher::refresh, this, &ContentView::keepSecondsBehindTicks);
}

/// One for each tick, so that each has all the time up to the next.
void ContentView::keepSecondsBehindTicks() {
    if (!state_->isTracking) return;
    for (auto* timer : findChildren<SecondTimer*>()) {
        if (timer->moveBehindTick(1 / state_->dopplerUpdateHz)) return;
    }
}

void ContentView::paintEvent(QPaintEvent*) {
    if (hasAppeared_) return;
    hasAppeared_ = true;
    QMetaObject::invokeMethod(this, &ContentView::firstAppearance, Qt::QueuedConnection);
}

QWidget* ContentView::makePanes(const StateRefresher& refresher) {
    auto* panes = makeSplitter(Qt::Horizontal, "panes");
    panes->setMinimumHeight(300);
    panes->addWidget(makeLeftPane(refresher));
    panes->addWidget(makeRightPane(refresher));
    shareOut(*panes, 780, 420);
    return panes;
}

QWidget* ContentView::makeLeftPane(const StateRefresher& refresher) {
    auto* skyTrack = new SkyTrackView(state_);
    skyTrack->setMinimumHeight(150);
    auto* passList = new PassListView(state_);
    passList->setMinimumHeight(120);
    connect(skyTrack, &SkyTrackView::browserRequested, this, &ContentView::browserRequested);
    connect(&refresher, &StateRefresher::refresh, skyTrack, &SkyTrackView::refresh);
    connect(&refresher, &StateRefresher::refresh, passList, &PassListView::refresh);

    auto* left = makeSplitter(Qt::Vertical, "leftPanes");
    left->setMinimumWidth(450);
    left->addWidget(skyTrack);
    left->addWidget(passList);
    shareOut(*left, 300, 200);
    return left;
}

QWidget* ContentView::makeRightPane(const StateRefresher& refresher) {
    auto* map = new SatelliteMapView(state_);
    map->setMinimumSize(320, 200);
    auto* polarPlot = new PolarPlotView(state_);
    connect(&refresher, &StateRefresher::refresh, map, &SatelliteMapView::refresh);
    connect(&refresher, &StateRefresher::refresh, polarPlot, &PolarPlotView::refresh);

    auto* sky = new QWidget;
    auto* padded = new QVBoxLayout(sky);
    padded->setContentsMargins(8, 8, 8, 8);
    padded->addWidget(polarPlot);

    auto* right = makeSplitter(Qt::Vertical, "rightPanes");
    right->addWidget(map);
    right->addWidget(sky);
    shareOut(*right, 400, 220);
    right->setSizes({285, 220});  // in a low window the sky comes before the map
    return right;
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
