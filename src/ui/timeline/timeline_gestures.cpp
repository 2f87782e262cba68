#include "ui/timeline/timeline_gestures.h"

#include <algorithm>
#include <cmath>

namespace veloran {

namespace {

constexpr double kSecondsPerHour = 3600;

double withinLimits(double hours) {
    return std::max(kLeastSpanHours, std::min(kGreatestSpanHours, hours));
}

}  // namespace

double zoomedSpan(double hours, double step) {
    return withinLimits(hours + step);
}

double pinchHours(double magnification) {
    constexpr double kUnmagnifiedHours = 12;
    return withinLimits(kUnmagnifiedHours / magnification);
}

Instant draggedStart(Instant start, double dx, double hours, double width) {
    if (!(width > 0)) return start;
    return start - dx / (width / (hours * kSecondsPerHour));
}

Instant startAroundNow(Instant now, double hours) {
    constexpr double kPastShare = 0.25;
    return now - hours * kPastShare * kSecondsPerHour;
}

void DragGesture::press(scene::Point at) {
    pressed_ = at;
    drags_ = false;
}

std::optional<double> DragGesture::move(scene::Point to) {
    if (!pressed_) return std::nullopt;
    drags_ = drags_ || std::hypot(to.x - pressed_->x, to.y - pressed_->y) >= kSlack;
    if (!drags_) return std::nullopt;
    return to.x - pressed_->x;
}

bool DragGesture::release() {
    const bool tapped = pressed_ && !drags_;
    pressed_.reset();
    return tapped;
}

int WheelSteps::add(double delta) {
    sum_ += delta;
    if (std::abs(sum_) < kStep) return 0;
    const int step = sum_ > 0 ? 1 : -1;
    sum_ = 0;
    return step;
}

std::optional<double> PinchGesture::grow(double increment) {
    return become(magnification_ + increment);
}

std::optional<double> PinchGesture::become(double magnification) {
    // Fingers that close further than any span asks for must not turn the scale round.
    constexpr double kLeast = 0.01;
    if (!std::isfinite(magnification)) return std::nullopt;
    magnification_ = std::max(kLeast, magnification);
    pinches_ = pinches_ || std::abs(magnification_ - 1) >= kSlack;
    if (!pinches_) return std::nullopt;
    return magnification_;
}

}  // namespace veloran
