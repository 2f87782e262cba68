#include "ui/sky_plot/frame_timer.h"

#include <QEvent>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace veloran {

int frameMilliseconds(double refreshRate) {
    constexpr double kUsualRate = 60;
    const bool isTold = std::isfinite(refreshRate) && refreshRate >= 1;
    return static_cast<int>(1000 / std::clamp(isTold ? refreshRate : kUsualRate, 30.0, 120.0));
}

FrameTimer::FrameTimer(MainLoop& loop, QWidget* widget)
    : QObject(widget), loop_(loop), widget_(widget) {
    widget_->installEventFilter(this);
}

bool FrameTimer::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Show:
            if (watched == widget_) followWindow();
            break;
        case QEvent::Hide:
        case QEvent::Expose:
        case QEvent::WindowStateChange:
            break;
        default:
            return false;
    }
    startOrStop();
    return false;
}

void FrameTimer::followWindow() {
    if (topLevel_ == widget_->window() && window_ == topLevel_->windowHandle()) return;
    if (topLevel_ && topLevel_ != widget_) topLevel_->removeEventFilter(this);
    if (window_) {
        window_->removeEventFilter(this);
        window_->disconnect(this);
    }
    topLevel_ = widget_->window();
    topLevel_->installEventFilter(this);
    window_ = topLevel_->windowHandle();
    if (!window_) return;
    window_->installEventFilter(this);
    connect(window_, &QWindow::screenChanged, this, &FrameTimer::startOrStop);
}

void FrameTimer::startOrStop() {
    if (!canBeSeen()) {
        timer_.reset();
        return;
    }
    const int interval = frameMilliseconds(widget_->screen()->refreshRate());
    if (timer_ && interval_ == interval) return;
    interval_ = interval;
    timer_ = loop_.every(interval / 1000.0, [this] { emit frame(); });
}

bool FrameTimer::canBeSeen() const {
    return widget_->isVisible() && topLevel_ && !topLevel_->isMinimized() && window_ &&
           window_->isExposed();
}

}  // namespace veloran
