#pragma once

#include <QWidget>
#include <memory>
#include <optional>

#include "core/app_state.h"
#include "ui/map/map_layers.h"
#include "ui/map/pass_track_cache.h"
#include "ui/second_timer.h"

namespace veloran {

class MapCanvas;
class MapControls;

/// The world with the station and, for the selected pass, its ground track, what it covers and
/// where its satellite is now. The camera is the user's: it is set anew only when the view appears
/// or its style changes.
class SatelliteMapView : public QWidget {
    Q_OBJECT
  public:
    explicit SatelliteMapView(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

    QSize sizeHint() const override { return {420, 400}; }
    const PassTrackCache& passTrackCache() const { return cache_; }

  public slots:
    void refresh();
    /// Moves what depends on the time to where it is now.
    void tick();

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void changeStyle();
    void fitCameraToPass();
    void recomputePassCache();
    bool takeSites();
    bool takeSelection();

    std::shared_ptr<AppState> state_;
    MapCanvas* canvas_;
    MapControls* controls_;
    MapContent content_;
    PassTrackCache cache_;
    SecondTimer everySecond_;
};

}  // namespace veloran
