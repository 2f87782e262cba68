#include "ui/scene/resize_pace.h"

namespace veloran {

namespace {

bool isRecent(const QElapsedTimer& since) {
    return since.isValid() && since.elapsed() < ResizePace::kMilliseconds;
}

}  // namespace

ResizePace::ResizePace(QWidget& widget) {
    rest_.setInterval(kMilliseconds);
    rest_.setSingleShot(true);
    QObject::connect(&rest_, &QTimer::timeout, &widget, [&widget] { widget.update(); });
}

void ResizePace::resized() {
    changes_ = isRecent(sinceResized_) ? changes_ + 1 : 1;
    sinceResized_.start();
    rest_.start();
}

bool ResizePace::mayStretch() const {
    return changes_ >= kDrag && rest_.isActive() && isRecent(sinceDrawn_);
}

}  // namespace veloran
