#pragma once

#include <QPoint>
#include <QSizeF>

#include "ui/map/map_camera.h"
#include "ui/scene/scene.h"

namespace veloran {

// What gestures make of a camera, for a view of this size (logical pixels). All cameras are clamped
// to what the view may show.

/// The camera that shows the ground seen at `from` at `to`: the flat map moves, the globe turns
/// about its axis and tilts while its heading stays. Beside the globe its limb is taken.
MapCamera pannedCamera(MapStyle style, const MapCamera& camera, QSizeF size, scene::Point from,
                       scene::Point to);

/// A step of the arrow keys, as shares of the view to the right and down. The flat map moves. The
/// globe turns along a parallel or a meridian, whichever lies nearer to this direction in the view:
/// the longitude changes or the latitude, never both.
MapCamera steppedCamera(MapStyle style, const MapCamera& camera, QSizeF size, double right,
                        double down);

/// `factor` above 1 goes nearer. The ground below the pointer stays there.
MapCamera zoomedAbout(MapStyle style, const MapCamera& camera, QSizeF size, scene::Point pointer,
                      double factor);

/// Turns the picture of the globe clockwise; the flat map keeps north up.
MapCamera rotated(MapStyle style, const MapCamera& camera, QSizeF size, double clockwiseDegrees);

/// Degrees clockwise that the pointer has gone round the middle of the view.
double turnAboutMiddle(QSizeF size, scene::Point from, scene::Point to);

/// Zoom factor for a turn of the wheel: by the pixels that a touchpad gives, else by notches of
/// 120 units.
double wheelZoomFactor(QPoint pixelDelta, QPoint angleDelta);

}  // namespace veloran
