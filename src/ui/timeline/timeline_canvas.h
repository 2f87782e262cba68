#pragma once

#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

#include "core/app_state.h"
#include "ui/pass_list/pass_rows.h"
#include "ui/scene/resize_pace.h"
#include "ui/scene/scene_pixmap.h"
#include "ui/second_timer.h"
#include "ui/timeline/timeline_gestures.h"
#include "ui/timeline/timeline_scene.h"

class QGestureEvent;
class QNativeGestureEvent;

namespace veloran {

class WheelMonitor;

/// The time axis, the arches of the passes over it, and the elevations beside them. It is dragged,
/// pinched and zoomed with the wheel; a tap selects a pass.
class TimelineCanvas : public QWidget {
    Q_OBJECT
  public:
    explicit TimelineCanvas(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

    /// Takes the passes to show, as passesByElevation gives them.
    void setPasses(std::vector<PassRow> byElevation);
    /// Reads the rest from the state; draws only what has changed.
    void refresh();
    /// Moves the marker of the present.
    void updateNow();

    /// How often the arches were drawn, which is what takes time.
    int archDrawings() const { return archDrawings_; }

    QSize minimumSizeHint() const override { return {0, kLeastHeight}; }

    static constexpr int kLeastHeight = 148;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

  private:
    /// What the kept pictures were made from, beside the passes.
    struct Shown {
        Instant start;
        double hours = 0;
        double threshold = 0;
        std::optional<UniqueId> selectedPass;
        bool operator==(const Shown&) const = default;
    };

    Shown shownByState() const;
    TimelineFrame frame() const;
    void forgetPictures();
    void describe();

    void pinch(const QNativeGestureEvent& event);
    void pinch(QGestureEvent& event);
    void setMagnification(const std::optional<double>& magnification);
    void zoomByWheel(double deltaY);
    void scrollBy(double hours);
    void tap(QPointF at);
    void select(std::size_t row);
    void markNeighbor(int step);
    std::optional<std::size_t> firstMark(const std::vector<std::size_t>& drawn) const;
    /// The row that the keyboard stands on, found again after the passes were computed anew.
    std::optional<std::size_t> markedRow() const;

    std::shared_ptr<AppState> state_;
    std::vector<PassRow> byElevation_;
    std::optional<PassRow> marked_;
    bool keyboardIsUsed_ = false;
    Shown shown_;

    ScenePixmap header_{Ink::window};
    ScenePixmap grid_;
    ScenePixmap arches_;
    ScenePixmap scale_;
    int archDrawings_ = 0;
    ResizePace pace_{*this, state_->loop(), state_->clock()};

    DragGesture drag_;
    std::optional<Instant> dragStart_;  ///< the left edge when the present drag began
    PinchGesture pinch_;
    WheelSteps wheel_;
    WheelMonitor* wheelMonitor_;
    /// While the canvas is seen.
    SecondTimer everySecond_{state_->loop(), state_->clock(), this};
};

}  // namespace veloran
