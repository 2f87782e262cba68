#include "ui/map/satellite_map_view.h"

#include <QShowEvent>

#include "ui/map/map_canvas.h"
#include "ui/map/map_controls.h"
#include "ui/map/map_texts.h"
#include "ui/q_text.h"

namespace veloran {

SatelliteMapView::SatelliteMapView(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent),
      state_(std::move(state)),
      canvas_(new MapCanvas(state_->loop(), state_->clock(), this)),
      controls_(new MapControls(state_->settings(), this)),
      everySecond_(state_->loop(), state_->clock(), this) {
    canvas_->setObjectName("satelliteMap");
    canvas_->setAccessibleName(tr("Satellite map"));
    canvas_->setMapStyle(controls_->mapStyle());
    connect(canvas_, &MapCanvas::fitRequested, this, &SatelliteMapView::fitCameraToPass);
    connect(controls_, &MapControls::mapStyleChanged, this, &SatelliteMapView::changeStyle);
    connect(controls_, &MapControls::extendedTrackHoursChanged, this, &SatelliteMapView::tick);
    connect(&everySecond_, &LoopTimer::timeout, this, &SatelliteMapView::tick);
    everySecond_.setObjectName("mapEverySecond");
    refresh();
    tick();
}

void SatelliteMapView::refresh() {
    const bool sitesChanged = takeSites();
    const bool selectionChanged = takeSelection();
    if (selectionChanged) recomputePassCache();
    if (sitesChanged || selectionChanged) tick();
}

void SatelliteMapView::tick() {
    content_.style = controls_->mapStyle();
    content_.extendedTrackHours = controls_->extendedTrackHours();
    const Instant now = state_->now();
    canvas_->setLayers(mapLayers(content_, cache_, now));
    const QString words =
        content_.selectedPass
            ? qText(positionInWords(*content_.selectedPass->satellite,
                                    currentSubSatellitePoint(content_.selectedPass, now)))
            : tr("No pass is selected.");
    if (words != canvas_->accessibleDescription()) canvas_->setAccessibleDescription(words);
}

void SatelliteMapView::showEvent(QShowEvent* event) {
    everySecond_.start();
    if (!event->spontaneous()) {  // else the window comes back from the dock
        fitCameraToPass();
        recomputePassCache();
    }
    tick();
}

void SatelliteMapView::hideEvent(QHideEvent*) {
    everySecond_.stop();
    canvas_->finishMotion();
}

void SatelliteMapView::resizeEvent(QResizeEvent*) {
    canvas_->setGeometry(rect());
    constexpr int kPadding = 8;
    controls_->adjustSize();
    controls_->move(width() - kPadding - controls_->width(), kPadding);
}

void SatelliteMapView::changeStyle() {
    canvas_->setMapStyle(controls_->mapStyle());
    fitCameraToPass();
    tick();
}

void SatelliteMapView::fitCameraToPass() {
    canvas_->easeTo(fittedCamera(controls_->mapStyle(), state_->obsLongitude));
}

void SatelliteMapView::recomputePassCache() {
    cache_.recomputePassCache(content_.selectedPass);
}

/// Whether a site is another one than is shown.
bool SatelliteMapView::takeSites() {
    const MapSite home = homeSite({state_->obsLatitude, state_->obsLongitude}, *state_->obsName);
    std::optional<MapSite> second;
    if (state_->obs2Enabled) {
        second = secondSite({state_->obs2Latitude, state_->obs2Longitude}, *state_->obs2Name);
    }
    if (home == content_.home && second == content_.second) return false;
    content_.home = home;
    content_.second = second;
    return true;
}

bool SatelliteMapView::takeSelection() {
    const auto& selected = state_->selectedPass.get();
    const auto idOf = [](const std::optional<PassInfo>& pass) {
        return pass ? std::optional(pass->id) : std::nullopt;
    };
    if (idOf(selected) == idOf(content_.selectedPass)) return false;
    content_.selectedPass = selected;
    return true;
}

}  // namespace veloran
