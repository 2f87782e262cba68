#include "ui/timeline/timeline_canvas.h"

#include <QFontMetricsF>
#include <QGestureEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPinchGesture>
#include <algorithm>
#include <utility>

#include "core/same_pass.h"
#include "ui/commands.h"
#include "ui/q_text.h"
#include "ui/scene/scene_painter.h"
#include "ui/theme.h"
#include "ui/timeline/timeline_texts.h"
#include "ui/timeline/wheel_monitor.h"

namespace veloran {

namespace {

constexpr int kHeaderHeight = static_cast<int>(kTimeHeaderHeight);
constexpr int kScaleWidth = static_cast<int>(kElevationScaleWidth);

double labelCharacterWidth() {
    return QFontMetricsF(Theme::mono(14, QFont::Medium)).horizontalAdvance('0');
}

}  // namespace

TimelineCanvas::TimelineCanvas(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent), state_(std::move(state)), wheelMonitor_(new WheelMonitor(*this)) {
    setObjectName("timeline");
    setAccessibleName(tr("SkyTrack timeline"));
    setFocusPolicy(Qt::StrongFocus);
    grabGesture(Qt::PinchGesture);
    connect(wheelMonitor_, &WheelMonitor::scrolled, this, &TimelineCanvas::zoomByWheel);
    connect(&everySecond_, &LoopTimer::timeout, this, &TimelineCanvas::updateNow);
    shown_ = shownByState();
    describe();
}

// ---- What is shown.

void TimelineCanvas::setPasses(std::vector<PassRow> byElevation) {
    byElevation_ = std::move(byElevation);
    arches_.invalidate();
    describe();
    update();
}

void TimelineCanvas::refresh() {
    const Shown before = std::exchange(shown_, shownByState());
    if (shown_ == before) return;
    forgetPictures();
    describe();
    update();
}

void TimelineCanvas::updateNow() {
    describe();
    update();
}

TimelineCanvas::Shown TimelineCanvas::shownByState() const {
    const auto& pass = state_->selectedPass.get();
    return {.start = state_->timelineStartTime,
            .hours = state_->timelineHoursVisible,
            .threshold = state_->minAutoTrackElevation,
            .selectedPass = pass ? std::optional(pass->id) : std::nullopt};
}

TimelineFrame TimelineCanvas::frame() const {
    return {.start = shown_.start,
            .hours = shown_.hours,
            .width = static_cast<double>(width()),
            .height = std::max(0.0, height() - kTimeHeaderHeight)};
}

void TimelineCanvas::forgetPictures() {
    header_.invalidate();
    grid_.invalidate();
    arches_.invalidate();
}

void TimelineCanvas::describe() {
    const Instant now = state_->now();
    const PassRow* next = nullptr;
    for (const PassRow& row : byElevation_) {
        const bool comesFirst = !next || row.riseTime < next->riseTime;
        if (row.riseTime > now && comesFirst) next = &row;
    }
    const auto spoken = [now](const PassRow& row) {
        return spokenPass(row.satellite->name, row.pass(), now);
    };
    const auto marked = markedRow();
    const auto shown = std::ranges::count_if(byElevation_, [at = frame()](const PassRow& row) {
        return isDrawn(at, row.riseTime, row.setTime);
    });
    const QString words = qText(timelineSummary(
        static_cast<std::size_t>(shown), next ? std::optional(spoken(*next)) : std::nullopt,
        marked ? std::optional(spoken(byElevation_[*marked])) : std::nullopt));
    if (words != accessibleDescription()) setAccessibleDescription(words);
}

void TimelineCanvas::paintEvent(QPaintEvent*) {
    const TimelineFrame timeline = frame();
    const int plotHeight = height() - kHeaderHeight;
    QPainter painter(this);
    painter.fillRect(rect(), Theme::color(Ink::control));
    painter.fillRect(0, 0, width(), kHeaderHeight, Theme::color(Ink::window));
    if (width() <= 0 || plotHeight <= 0) return;

    header_.draw(painter, {width(), kHeaderHeight},
                 [&] { return timeHeaderScene(timeline, labelCharacterWidth()); });
    painter.translate(0, kHeaderHeight);
    painter.setClipRect(0, 0, width(), plotHeight);
    const QSize plot(width(), plotHeight);
    grid_.draw(painter, plot, [&] { return timelineGridScene(timeline, shown_.threshold); });
    arches_.draw(
        painter, plot,
        [&] {
            ++archDrawings_;
            pace_.drawnAnew();
            return archesScene(timeline, byElevation_, state_->selectedPass);
        },
        pace_.mayStretch());
    // Under the elevations arches shine through, yet leave the figures legible.
    painter.fillRect(0, 0, kScaleWidth, plotHeight, Theme::color(Ink::control, 0.7));
    ScenePainter scene(painter);
    scene.draw(nowMarkerScene(timeline, state_->now()));
    const bool showsKeyboard = hasFocus() && keyboardIsUsed_;
    if (const auto marked = showsKeyboard ? markedRow() : std::nullopt) {
        scene.draw(keyboardMarkScene(timeline, byElevation_[*marked].pass()));
    }
    scale_.draw(painter, {kScaleWidth, plotHeight},
                [&] { return elevationScaleScene(timeline.height); });
    if (!showsKeyboard) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Theme::color(Ink::blue), 1.5));
    painter.drawRoundedRect(QRectF(QPointF(), plot).adjusted(1, 1, -1, -1), 3, 3);
}

void TimelineCanvas::resizeEvent(QResizeEvent*) {
    pace_.resized();
    describe();
}

void TimelineCanvas::showEvent(QShowEvent*) {
    describe();
    everySecond_.start();
    wheelMonitor_->start();
}

void TimelineCanvas::hideEvent(QHideEvent*) {
    everySecond_.stop();
    wheelMonitor_->stop();
    wheel_ = WheelSteps();
    drag_.cancel();
    dragStart_.reset();
}

// ---- The hand.

bool TimelineCanvas::event(QEvent* event) {
    if (event->type() == QEvent::NativeGesture) {
        pinch(*static_cast<QNativeGestureEvent*>(event));
        return true;
    }
    if (event->type() == QEvent::Gesture) {
        pinch(*static_cast<QGestureEvent*>(event));
        return true;
    }
    return QWidget::event(event);
}

void TimelineCanvas::pinch(const QNativeGestureEvent& event) {
    if (event.gestureType() == Qt::BeginNativeGesture) pinch_.begin();
    if (event.gestureType() == Qt::ZoomNativeGesture) setMagnification(pinch_.grow(event.value()));
    if (event.gestureType() == Qt::EndNativeGesture) pinch_.begin();
}

void TimelineCanvas::pinch(QGestureEvent& event) {
    const auto* gesture = static_cast<QPinchGesture*>(event.gesture(Qt::PinchGesture));
    if (!gesture) return;
    if (gesture->state() == Qt::GestureStarted) pinch_.begin();
    setMagnification(pinch_.become(gesture->totalScaleFactor()));
    event.accept();
}

void TimelineCanvas::setMagnification(const std::optional<double>& magnification) {
    if (!magnification) return;
    drag_.cancel();  // by the first of the two fingers
    dragStart_.reset();
    state_->timelineHoursVisible = pinchHours(*magnification);
}

void TimelineCanvas::zoomByWheel(double deltaY) {
    const int step = wheel_.add(deltaY);
    if (step == 0) return;
    // Later, as the views beneath still have to see the event in the state that it was meant for.
    QMetaObject::invokeMethod(
        this,
        [this, step] {
            state_->timelineHoursVisible = zoomedSpan(state_->timelineHoursVisible, step);
        },
        Qt::QueuedConnection);
}

void TimelineCanvas::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    keyboardIsUsed_ = false;
    drag_.press({event->position().x(), event->position().y()});
    dragStart_.reset();
}

void TimelineCanvas::mouseMoveEvent(QMouseEvent* event) {
    const auto dx = drag_.move({event->position().x(), event->position().y()});
    if (!dx) return;
    if (!dragStart_) dragStart_ = state_->timelineStartTime;
    state_->timelineStartTime =
        draggedStart(*dragStart_, *dx, state_->timelineHoursVisible, width());
}

void TimelineCanvas::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    if (drag_.release()) tap(event->position());
    dragStart_.reset();
}

void TimelineCanvas::tap(QPointF at) {
    if (at.y() < kTimeHeaderHeight) return;
    if (const auto row = tappedPass(frame(), byElevation_, at.x())) select(*row);
}

void TimelineCanvas::select(std::size_t row) {
    const PassRow picked = byElevation_[row];
    marked_ = picked;
    selectPass(*state_, picked.satellite, picked.pass());
    describe();
}

// ---- The keyboard.

void TimelineCanvas::keyPressEvent(QKeyEvent* event) {
    constexpr double kScrollShare = 0.1;
    const double step = state_->timelineHoursVisible * kScrollShare;
    keyboardIsUsed_ = true;
    switch (event->key()) {
        case Qt::Key_Left:
            return scrollBy(-step);
        case Qt::Key_Right:
            return scrollBy(step);
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            return zoomIn(*state_);
        case Qt::Key_Minus:
            return zoomOut(*state_);
        case Qt::Key_Home:
            return scrollToNow(*state_);
        case Qt::Key_Up:
            return markNeighbor(-1);
        case Qt::Key_Down:
            return markNeighbor(1);
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            if (const auto row = markedRow()) select(*row);
            return;
        default:
            QWidget::keyPressEvent(event);
    }
}

void TimelineCanvas::focusInEvent(QFocusEvent* event) {
    keyboardIsUsed_ = event->reason() != Qt::MouseFocusReason;
    QWidget::focusInEvent(event);
}

void TimelineCanvas::scrollBy(double hours) {
    constexpr double kSecondsPerHour = 3600;
    state_->timelineStartTime = state_->timelineStartTime.get() + hours * kSecondsPerHour;
}

void TimelineCanvas::markNeighbor(int step) {
    const auto drawn = drawnPasses(frame(), byElevation_);
    if (drawn.empty()) return;
    const auto marked = markedRow();
    const auto at = marked ? std::ranges::find(drawn, *marked) : drawn.end();
    std::size_t row = firstMark(drawn).value_or(drawn.front());
    if (at != drawn.end()) {
        const auto last = std::ssize(drawn) - 1;
        row = drawn[static_cast<std::size_t>(
            std::clamp<std::ptrdiff_t>(at - drawn.begin() + step, 0, last))];
    }
    marked_ = byElevation_[row];
    describe();
    update();
}

std::optional<std::size_t> TimelineCanvas::firstMark(const std::vector<std::size_t>& drawn) const {
    for (const std::size_t row : drawn) {
        if (isSelectedPass(byElevation_[row], state_->selectedPass)) return row;
    }
    for (const std::size_t row : drawn) {
        if (byElevation_[row].pass().setTime >= state_->now()) return row;
    }
    return std::nullopt;
}

std::optional<std::size_t> TimelineCanvas::markedRow() const {
    if (!marked_) return std::nullopt;
    const auto spanOfRow = [](const PassRow& row) {
        return PassSpan{row.satellite->id, row.riseTime, row.setTime};
    };
    const auto found =
        std::ranges::find_if(byElevation_, [&, marked = spanOfRow(*marked_)](const PassRow& row) {
            return isSamePass(spanOfRow(row), marked);
        });
    if (found == byElevation_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - byElevation_.begin());
}

}  // namespace veloran
