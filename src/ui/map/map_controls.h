#pragma once

#include <QSlider>
#include <QWidget>

#include "platform/settings_store.h"
#include "ui/map/map_camera.h"

namespace veloran {

class SegmentedPicker;
class ValueLabel;

/// What lies on the map at its top right: how much of the ground track to show, and the style of
/// the map. Both are kept in the settings.
class MapControls : public QWidget {
    Q_OBJECT
  public:
    explicit MapControls(SettingsStore& settings, QWidget* parent = nullptr);

    MapStyle mapStyle() const { return style_; }
    double extendedTrackHours() const { return hours_; }

  signals:
    void mapStyleChanged();
    void extendedTrackHoursChanged();

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* makeTrackControl();
    SegmentedPicker* makeStylePicker();
    void setHours(double hours);
    void showHours();

    SettingsStore& settings_;
    MapStyle style_;
    double hours_;
    QSlider* slider_;
    ValueLabel* hoursText_;
};

}  // namespace veloran
