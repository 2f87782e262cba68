#pragma once

#include <vector>

#include "app/application.h"

namespace veloran {

/// Notes how long each event keeps the main thread: a frame that takes long shows here.
class WatchedApplication : public Application {
  public:
    using Application::Application;

    bool notify(QObject* receiver, QEvent* event) override;

    const std::vector<double>& eventTimes() const { return times_; }  ///< milliseconds
    void forget() { times_.clear(); }

  private:
    std::vector<double> times_;
    int depth_ = 0;
};

}  // namespace veloran
