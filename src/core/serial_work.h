#pragma once

#include <deque>
#include <functional>
#include <memory>

#include "platform/machine.h"

namespace veloran {

/// Work on the workers, one task after the other in the order given: for files that are read,
/// changed and written back. Main thread only. What was given is carried out also when this ends.
class SerialWork {
  public:
    explicit SerialWork(const Machine& machine);

    /// `task` runs on a worker; back on the main thread the next task begins, then `done` is
    /// called, which may be empty.
    void run(std::function<void()> task, std::function<void()> done);

  private:
    struct Line;
    std::shared_ptr<Line> line_;
};

}  // namespace veloran
