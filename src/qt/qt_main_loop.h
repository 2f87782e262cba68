#pragma once

#include <memory>

#include "platform/main_loop.h"

namespace veloran {

/// The event loop of the QCoreApplication. Made on the main thread; lives longer than everything
/// that posts to it, and drops what is still waiting when it goes.
class QtMainLoop final : public MainLoop {
  public:
    QtMainLoop();
    ~QtMainLoop() override;

    void post(Task task) override;
    void after(double seconds, Task task) override;
    /// Counts by the steady clock and keeps to the grid of the start, whatever a firing was late.
    /// Intervals below a millisecond are taken as one.
    [[nodiscard]] std::unique_ptr<Timer> every(double seconds, Task task) override;

  private:
    class Receiver;
    std::unique_ptr<Receiver> receiver_;
};

}  // namespace veloran
