#pragma once

#include <memory>

#include "platform/main_loop.h"

namespace veloran {

/// A pool of threads of its own. Its end waits for the tasks that run and drops those that have
/// not begun. On Linux its threads give way to the others of the program, so that a long
/// computation does not make a timer late.
class ThreadWorkers final : public WorkerPool {
  public:
    ThreadWorkers();                      ///< as many threads as the machine has processors
    explicit ThreadWorkers(int threads);  ///< with one, tasks run in the order they were given
    ~ThreadWorkers() override;

    using WorkerPool::run;
    void run(MainLoop::Task task, Priority priority) override;

  private:
    struct Pool;
    std::unique_ptr<Pool> pool_;
};

}  // namespace veloran
