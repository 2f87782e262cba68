#include "ui/map/map_canvas.h"

#include <QGestureEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPinchGesture>
#include <QWheelEvent>
#include <cmath>

#include "ui/map/map_gestures.h"
#include "ui/map/map_projection.h"
#include "ui/map/map_scene.h"
#include "ui/scene/scene_painter.h"
#include "ui/theme.h"

namespace veloran {

namespace {

constexpr double kKeyZoom = 1.5;
constexpr double kDoubleClickZoom = 2;
constexpr double kKeyTurn = 15;    // degrees
constexpr double kKeyStep = 0.15;  // of the view
constexpr double kFrame = 0.016;   // seconds between two frames of a motion
constexpr double kSettled = 0.2;   // seconds after the last one

scene::Point pointOf(const QPointF& point) {
    return {point.x(), point.y()};
}

}  // namespace

MapCanvas::MapCanvas(MainLoop& loop, const Clock& clock, QWidget* parent)
    : QWidget(parent),
      clock_(clock),
      frames_(loop, kFrame),
      settled_(loop, kSettled, LoopTimer::Kind::single),
      pace_(*this, loop, clock) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    grabGesture(Qt::PinchGesture);
    connect(&frames_, &LoopTimer::timeout, this, &MapCanvas::advanceMotion);
    connect(&settled_, &LoopTimer::timeout, this, [this] { update(); });
    connect(&earth_, &EarthPicture::loaded, this, [this] {
        base_.invalidate();
        update();
    });
}

void MapCanvas::setMapStyle(MapStyle style) {
    if (style == style_) return;
    style_ = style;
    if (!isFlat(style)) earth_.load();
    drag_.reset();
    cameraMoved();
}

void MapCanvas::setLayers(MapLayers layers) {
    if (layers == layers_) return;
    layers_ = std::move(layers);
    scene_.reset();
    update();
}

MapCamera MapCanvas::camera() const {
    return clampedCamera(style_, camera_, size());
}

const scene::Scene& MapCanvas::scene() {
    if (!scene_) scene_ = mapScene(layers_, *makeProjection(style_, camera(), size()));
    return *scene_;
}

void MapCanvas::easeTo(const MapCamera& goal) {
    drag_.reset();
    motion_ = CameraMotion{.from = camera(), .to = goal, .start = clock_.now()};
    frames_.start();
}

void MapCanvas::advanceMotion() {
    if (!motion_) return;
    const Instant now = clock_.now();
    camera_ = motion_->at(now);
    if (motion_->isOver(now)) {
        motion_.reset();
        frames_.stop();
    }
    cameraMoved();
}

void MapCanvas::finishMotion() {
    if (!motion_) return;
    camera_ = motion_->to;
    motion_.reset();
    frames_.stop();
    cameraMoved();
}

void MapCanvas::moveTo(const MapCamera& camera) {
    motion_.reset();
    frames_.stop();
    camera_ = camera;
    cameraMoved();
}

void MapCanvas::cameraMoved() {
    scene_.reset();
    settled_.start();
    update();
}

bool MapCanvas::isMoving() const {
    return motion_ || settled_.isActive();
}

void MapCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawWorld(painter);
    ScenePainter(painter, Ink::window).draw(scene());
    if (!isFocusMarked_) return;
    painter.setPen(QPen(palette().highlight(), 4));  // half of it lies outside
    painter.drawRect(rect());
}

void MapCanvas::drawWorld(QPainter& painter) {
    const bool mayStretch = pace_.mayStretch() && !isMoving();
    const int before = base_.drawings();
    const QPixmap& world = base_.pixmap(
        {.style = style_, .camera = camera(), .size = size(), .scale = devicePixelRatioF()},
        earth_.image(), isMoving(), mayStretch, clock_);
    if (base_.drawings() != before) pace_.drawnAnew();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, !mayStretch);
    painter.drawPixmap(rect(), world);
}

void MapCanvas::resizeEvent(QResizeEvent*) {
    pace_.resized();
    scene_.reset();
}

void MapCanvas::stepBy(double right, double down) {
    moveTo(steppedCamera(style_, camera(), size(), right, down));
}

void MapCanvas::zoomBy(double factor, scene::Point about) {
    moveTo(zoomedAbout(style_, camera(), size(), about, factor));
    if (drag_) drag_ = Drag{drag_->turns, pointer_, camera()};
}

void MapCanvas::turnBy(double clockwiseDegrees) {
    moveTo(rotated(style_, camera(), size(), clockwiseDegrees));
    if (drag_) drag_ = Drag{drag_->turns, pointer_, camera()};
}

void MapCanvas::mousePressEvent(QMouseEvent* event) {
    const bool turns =
        event->button() == Qt::RightButton ||
        (event->button() == Qt::LeftButton && event->modifiers() & Qt::ShiftModifier);
    if (drag_ || (!turns && event->button() != Qt::LeftButton)) return;
    moveTo(camera());  // takes hold of a moving map
    pointer_ = pointOf(event->position());
    drag_ = Drag{turns, pointer_, camera()};
    if (!turns) setCursor(Qt::ClosedHandCursor);
}

void MapCanvas::mouseMoveEvent(QMouseEvent* event) {
    pointer_ = pointOf(event->position());
    if (event->buttons() == Qt::NoButton) drag_.reset();  // let go where this view did not see it
    if (!drag_) return;
    if (drag_->turns) {
        moveTo(
            rotated(style_, drag_->camera, size(), turnAboutMiddle(size(), drag_->from, pointer_)));
    } else {
        moveTo(pannedCamera(style_, drag_->camera, size(), drag_->from, pointer_));
    }
}

void MapCanvas::mouseReleaseEvent(QMouseEvent* event) {
    if (event->buttons() & (Qt::LeftButton | Qt::RightButton)) return;
    drag_.reset();
    unsetCursor();
}

void MapCanvas::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    zoomBy(kDoubleClickZoom, pointOf(event->position()));
}

void MapCanvas::wheelEvent(QWheelEvent* event) {
    pointer_ = pointOf(event->position());
    const double factor = wheelZoomFactor(event->pixelDelta(), event->angleDelta());
    if (factor != 1) zoomBy(factor, pointer_);
    event->accept();
}

void MapCanvas::keyPressEvent(QKeyEvent* event) {
    const scene::Point middle{width() / 2.0, height() / 2.0};
    switch (event->key()) {
        case Qt::Key_Left:
            return stepBy(-kKeyStep, 0);
        case Qt::Key_Right:
            return stepBy(kKeyStep, 0);
        case Qt::Key_Up:
            return stepBy(0, -kKeyStep);
        case Qt::Key_Down:
            return stepBy(0, kKeyStep);
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            return zoomBy(kKeyZoom, middle);
        case Qt::Key_Minus:
            return zoomBy(1 / kKeyZoom, middle);
        case Qt::Key_BracketLeft:
            return turnBy(-kKeyTurn);
        case Qt::Key_BracketRight:
            return turnBy(kKeyTurn);
        case Qt::Key_Home:
        case Qt::Key_0:
            return emit fitRequested();
        default:
            QWidget::keyPressEvent(event);
    }
}

bool MapCanvas::event(QEvent* event) {
    if (event->type() == QEvent::NativeGesture &&
        nativeGesture(*static_cast<QNativeGestureEvent*>(event))) {
        return true;
    }
    if (event->type() == QEvent::Gesture) {
        if (QGesture* pinch = static_cast<QGestureEvent*>(event)->gesture(Qt::PinchGesture)) {
            pinched(*static_cast<QPinchGesture*>(pinch));
            return true;
        }
    }
    return QWidget::event(event);
}

bool MapCanvas::nativeGesture(const QNativeGestureEvent& event) {
    switch (event.gestureType()) {
        case Qt::ZoomNativeGesture:
            zoomBy(1 + event.value(), pointOf(event.position()));
            return true;
        case Qt::RotateNativeGesture:
            turnBy(event.value());
            return true;
        case Qt::SmartZoomNativeGesture:
            zoomBy(kDoubleClickZoom, pointOf(event.position()));
            return true;
        default:
            return false;
    }
}

void MapCanvas::pinched(const QPinchGesture& pinch) {
    const QPointF about = mapFromGlobal(pinch.centerPoint());
    const QPointF before = mapFromGlobal(pinch.lastCenterPoint());
    if (pinch.changeFlags() & QPinchGesture::CenterPointChanged) {
        moveTo(pannedCamera(style_, camera(), size(), pointOf(before), pointOf(about)));
    }
    if (pinch.changeFlags() & QPinchGesture::ScaleFactorChanged) {
        zoomBy(pinch.scaleFactor(), pointOf(about));
    }
    if (pinch.changeFlags() & QPinchGesture::RotationAngleChanged) {
        turnBy(pinch.rotationAngle() - pinch.lastRotationAngle());
    }
}

void MapCanvas::focusInEvent(QFocusEvent* event) {
    const auto reason = event->reason();
    markFocus(reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason);
}

void MapCanvas::focusOutEvent(QFocusEvent*) {
    markFocus(false);
}

void MapCanvas::markFocus(bool isMarked) {
    isFocusMarked_ = isMarked;
    update();
}

}  // namespace veloran
