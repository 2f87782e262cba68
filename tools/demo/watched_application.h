#pragma once

#include <optional>
#include <vector>

#include "app/application.h"

namespace veloran {

/// Notes how long each event keeps the main thread: a frame that takes long shows here. And when
/// the first one stood on the screen.
class WatchedApplication : public Application {
  public:
    using Application::Application;

    bool notify(QObject* receiver, QEvent* event) override;

    const std::vector<double>& eventTimes() const { return times_; }  ///< milliseconds
    /// Seconds after the start of the process; absent before it.
    const std::optional<double>& firstPaint() const { return firstPaint_; }
    void forget() { times_.clear(); }

  private:
    std::vector<double> times_;
    int depth_ = 0;
    bool isPainted_ = false;
    std::optional<double> firstPaint_;
};

}  // namespace veloran
