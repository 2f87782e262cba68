#pragma once

#include <QWidget>
#include <optional>

#include "base/instant.h"
#include "ui/loop_timer.h"
#include "ui/map/camera_motion.h"
#include "ui/map/earth_picture.h"
#include "ui/map/kept_base_map.h"
#include "ui/map/map_layers.h"
#include "ui/scene/resize_pace.h"

class QNativeGestureEvent;
class QPainter;
class QPinchGesture;

namespace veloran {

/// The map itself: shows layers over the world from a camera that the user moves by mouse, wheel,
/// touch and keyboard.
class MapCanvas : public QWidget {
    Q_OBJECT
  public:
    MapCanvas(MainLoop& loop, const Clock& clock, QWidget* parent = nullptr);

    void setMapStyle(MapStyle style);
    void setLayers(MapLayers layers);
    /// Moves the camera there in CameraMotion::kSeconds, unless the user takes hold of it.
    void easeTo(const MapCamera& camera);
    /// Ends a motion at its goal.
    void finishMotion();

    /// What is shown: within what the style allows for this size.
    MapCamera camera() const;
    bool isEasing() const { return motion_.has_value(); }
    const MapLayers& layers() const { return layers_; }
    const scene::Scene& scene();
    int baseMapDrawings() const { return base_.drawings(); }

  public slots:
    /// The next frame of a motion.
    void advanceMotion();

  signals:
    /// Home or 0.
    void fitRequested();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

  private:
    /// From where the button went down.
    struct Drag {
        bool turns;
        scene::Point from;
        MapCamera camera;
    };

    bool isMoving() const;
    void drawWorld(QPainter& painter);
    void moveTo(const MapCamera& camera);
    void cameraMoved();
    void zoomBy(double factor, scene::Point about);
    void turnBy(double clockwiseDegrees);
    void stepBy(double right, double down);
    bool nativeGesture(const QNativeGestureEvent& event);
    void pinched(const QPinchGesture& pinch);
    void markFocus(bool isMarked);

    const Clock& clock_;
    MapStyle style_ = MapStyle::standard;
    MapCamera camera_ = {.center = {0, -84}};  // until the first fit
    std::optional<CameraMotion> motion_;
    std::optional<Drag> drag_;
    scene::Point pointer_;
    MapLayers layers_;
    std::optional<scene::Scene> scene_;
    EarthPicture earth_;
    KeptBaseMap base_;
    LoopTimer frames_;
    LoopTimer settled_;
    ResizePace pace_;
    bool isFocusMarked_ = false;
};

}  // namespace veloran
