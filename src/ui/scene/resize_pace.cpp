#include "ui/scene/resize_pace.h"

namespace veloran {

ResizePace::ResizePace(QWidget& widget, MainLoop& loop, const Clock& clock)
    : clock_(clock), rest_(loop, kSeconds, LoopTimer::Kind::single) {
    QObject::connect(&rest_, &LoopTimer::timeout, &widget, [&widget] { widget.update(); });
}

void ResizePace::resized() {
    changes_ = isRecent(resized_) ? changes_ + 1 : 1;
    resized_ = clock_.now();
    rest_.start();
}

bool ResizePace::mayStretch() const {
    return changes_ >= kDrag && rest_.isActive() && isRecent(drawn_);
}

bool ResizePace::isRecent(const std::optional<Instant>& time) const {
    if (!time) return false;
    const double ago = clock_.now() - *time;
    return ago >= 0 && ago < kSeconds;
}

}  // namespace veloran
