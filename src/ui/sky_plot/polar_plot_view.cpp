#include "ui/sky_plot/polar_plot_view.h"

#include "ui/sky_plot/disk_view.h"
#include "ui/sky_plot/look_angle_table.h"
#include "ui/sky_plot/sky_plot_layout.h"

namespace veloran {

PolarPlotView::PolarPlotView(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent),
      disk_(new DiskView(state, this)),
      table_(new LookAngleTable(state, this)),
      everySecond_(state->loop(), state->clock(), this) {
    setObjectName("polarPlot");
    connect(table_, &LookAngleTable::widestChanged, this, [this] {
        updateGeometry();
        arrange();
    });
    everySecond_.setObjectName("skyEverySecond");
    connect(&everySecond_, &LoopTimer::timeout, this, &PolarPlotView::showSecond);
}

QSize PolarPlotView::minimumSizeHint() const {
    return leastSkyPlotSize(SkyPlotLayout::kUsualDisk,
                            [this](int pixels) { return table_->measure(pixels); });
}

void PolarPlotView::refresh() {
    disk_->refresh();
    table_->refresh();
}

void PolarPlotView::resizeEvent(QResizeEvent*) {
    arrange();
}

void PolarPlotView::showEvent(QShowEvent*) {
    showSecond();
    everySecond_.start();
}

void PolarPlotView::hideEvent(QHideEvent*) {
    everySecond_.stop();
}

void PolarPlotView::arrange() {
    const SkyPlotLayout layout = arrangeSkyPlot(
        size(), DiskView::kLeastSide, [this](int pixels) { return table_->measure(pixels); });
    disk_->setGeometry(0, 0, layout.diskSide, layout.diskSide);
    table_->setGeometry(layout.diskSide + SkyPlotLayout::kSpacing, 0, layout.table.width(),
                        layout.table.height());
    table_->arrange(layout.table);
}

void PolarPlotView::showSecond() {
    table_->showNow();
    disk_->describe();
}

}  // namespace veloran
