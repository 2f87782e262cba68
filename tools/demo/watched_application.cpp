#include "demo/watched_application.h"

#include <QThread>
#include <chrono>

namespace veloran {

bool WatchedApplication::notify(QObject* receiver, QEvent* event) {
    if (QThread::currentThread() != thread()) return Application::notify(receiver, event);
    const auto begun = std::chrono::steady_clock::now();
    ++depth_;
    const bool handled = Application::notify(receiver, event);
    --depth_;
    if (depth_ == 0) {
        const std::chrono::duration<double, std::milli> took =
            std::chrono::steady_clock::now() - begun;
        times_.push_back(took.count());
    }
    return handled;
}

}  // namespace veloran
