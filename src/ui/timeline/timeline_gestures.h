#pragma once

#include <optional>

#include "base/instant.h"
#include "ui/scene/scene.h"

namespace veloran {

// How the hand moves the timeline, as mathematics. Spans in hours, distances in points.

inline constexpr double kLeastSpanHours = 2;
inline constexpr double kGreatestSpanHours = 48;

/// The span `step` hours longer, or shorter for a negative step, within the limits.
double zoomedSpan(double hours, double step);
inline double zoomIn(double hours) {
    return zoomedSpan(hours, -1);
}
inline double zoomOut(double hours) {
    return zoomedSpan(hours, 1);
}

/// The span of a pinch: it depends on the gesture alone, so that every pinch starts from 12 hours.
double pinchHours(double magnification);

/// The left edge once the content, which began at `start`, was moved by `dx` points to the right.
Instant draggedStart(Instant start, double dx, double hours, double width);
/// The left edge that has the present a quarter of the span in from the left.
Instant startAroundNow(Instant now, double hours);

/// A press that becomes a drag once it has gone far enough; a tap if it never does.
class DragGesture {
  public:
    static constexpr double kSlack = 5;

    void press(scene::Point at);
    /// Distance to the right since the press, once this is a drag.
    std::optional<double> move(scene::Point to);
    /// True when the press was a tap.
    bool release();
    void cancel() { pressed_.reset(); }

  private:
    std::optional<scene::Point> pressed_;
    bool drags_ = false;
};

/// Adds up the scrolling of a wheel or a touchpad to whole steps of zooming.
class WheelSteps {
  public:
    static constexpr double kStep =
        3;  ///< a wheel's notch is as much, or three points of a touchpad

    /// 1 or -1 when a step is complete, after which the sum starts anew; else 0.
    int add(double delta);

  private:
    double sum_ = 0;
};

/// The magnification of a pinch, from the increments of a touchpad.
class PinchGesture {
  public:
    static constexpr double kSlack = 0.01;

    void begin() { *this = PinchGesture(); }
    /// The magnification so far, once it has left the slack.
    std::optional<double> grow(double increment);
    std::optional<double> become(double magnification);

  private:
    double magnification_ = 1;
    bool pinches_ = false;
};

}  // namespace veloran
