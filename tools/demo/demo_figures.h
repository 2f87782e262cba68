#pragma once

#include <string>

#include "demo/watched_application.h"
#include "demo/watched_loop.h"

namespace veloran {

/// Figures of the running window: how late the radio's timer fires, how long the main thread is
/// kept, and the share of a processor core. They count from `begin`.
class DemoFigures {
  public:
    DemoFigures(WatchedApplication& application, WatchedLoop& loop, double rateHz);

    void begin();
    std::string report() const;

  private:
    WatchedApplication& application_;
    WatchedLoop& loop_;
    std::chrono::steady_clock::time_point begun_;
    double processorAtBegin_ = 0;
};

/// Used by the whole process so far.
double processorSeconds();

}  // namespace veloran
