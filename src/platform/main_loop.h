#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace veloran {

/// A repeating timer; destroying it cancels it, also from inside its own action.
class Timer {
  public:
    virtual ~Timer() = default;
};

/// The loop of the main thread, on which all state lives.
class MainLoop {
  public:
    using Task = std::function<void()>;

    virtual ~MainLoop() = default;

    /// Runs `task` later on the main thread, first in, first out. From any thread.
    virtual void post(Task task) = 0;
    /// Runs `task` once, `seconds` from now. Main thread only.
    virtual void after(double seconds, Task task) = 0;
    /// Runs `task` every `seconds`, the first time one interval from now. Main thread only. A busy
    /// loop skips firings, it never runs several at once to catch up.
    [[nodiscard]] virtual std::unique_ptr<Timer> every(double seconds, Task task) = 0;
};

/// Threads for work that would hold up the main thread. Tasks may run at once and in any order;
/// they get values, and give back their results by MainLoop::post.
class WorkerPool {
  public:
    /// Which of the tasks that wait go first: somebody waits for a file, while long computations
    /// may be very many.
    enum class Priority { computation, file };

    virtual ~WorkerPool() = default;
    virtual void run(MainLoop::Task task, Priority priority) = 0;
    void run(MainLoop::Task task) { run(std::move(task), Priority::file); }
};

}  // namespace veloran
