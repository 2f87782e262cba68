#include "demo/watched_application.h"

#include <QThread>
#include <chrono>

#include "demo/process_figures.h"

namespace veloran {

bool WatchedApplication::notify(QObject* receiver, QEvent* event) {
    if (QThread::currentThread() != thread()) return Application::notify(receiver, event);
    const auto begun = std::chrono::steady_clock::now();
    ++depth_;
    const bool handled = Application::notify(receiver, event);
    --depth_;
    isPainted_ |= event->type() == QEvent::Paint;
    if (depth_ == 0) {
        // The outermost event of a frame ends when the picture has gone to the screen.
        if (isPainted_ && !firstPaint_) firstPaint_ = secondsSinceStart();
        const std::chrono::duration<double, std::milli> took =
            std::chrono::steady_clock::now() - begun;
        times_.push_back(took.count());
    }
    return handled;
}

}  // namespace veloran
