#pragma once

#include <string>

#include "demo/watched_application.h"
#include "demo/watched_loop.h"

namespace veloran {

/// Figures of the running window: when it first was painted, how late the radio's timer fires, how
/// long the main thread is kept, the share of a processor core, and the memory in the end. They
/// count from `begin`, but for the first and the last.
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

}  // namespace veloran
