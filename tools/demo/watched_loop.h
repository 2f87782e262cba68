#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include "platform/main_loop.h"

namespace veloran {

/// A main loop that notes how late its repeating timers fire.
class WatchedLoop final : public MainLoop {
  public:
    explicit WatchedLoop(MainLoop& loop) : loop_(loop) {}

    void post(Task task) override { loop_.post(std::move(task)); }
    void after(double seconds, Task task) override { loop_.after(seconds, std::move(task)); }
    std::unique_ptr<Timer> every(double seconds, Task task) override;

    /// Milliseconds behind their moment, of the timers with this interval since the last `forget`.
    const std::vector<double>& lateness() const { return *lateness_; }
    void watchInterval(double seconds) { watched_ = seconds; }
    void forget() { lateness_->clear(); }

  private:
    MainLoop& loop_;
    double watched_ = 0;
    std::shared_ptr<std::vector<double>> lateness_ = std::make_shared<std::vector<double>>();
};

}  // namespace veloran
