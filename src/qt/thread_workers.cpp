#include "qt/thread_workers.h"

#include <QRunnable>
#include <QThread>
#include <QThreadPool>
#include <algorithm>
#include <utility>

#include "base/vector_state.h"
#include "qt/handover.h"
#include "qt/thread_priority.h"

namespace veloran {

struct ThreadWorkers::Pool {
    int niceness = lowerNiceness();  // than that of the thread that makes the pool
    Handover results;
    QThreadPool threads;
};

namespace {

class Work final : public QRunnable {
  public:
    Work(MainLoop::Task task, int niceness, Handover& results)
        : task_(std::move(task)), niceness_(niceness), results_(results) {
        begin_.give();
    }

    void run() override {
        begin_.take();
        setNiceness(niceness_);  // each time: the pool replaces its threads at will
        clearUpperVectorHalves();
        task_();
        task_ = nullptr;  // what it holds goes before the end of the pool counts it as done
        results_.give();
    }

  private:
    Handover begin_;
    MainLoop::Task task_;
    int niceness_;
    Handover& results_;
};

}  // namespace

ThreadWorkers::ThreadWorkers() : ThreadWorkers(QThread::idealThreadCount()) {}

ThreadWorkers::ThreadWorkers(int threads) : pool_(std::make_unique<Pool>()) {
    pool_->threads.setMaxThreadCount(std::max(threads, 1));
}

ThreadWorkers::~ThreadWorkers() {
    pool_->threads.clear();
    pool_->threads.waitForDone();
    pool_->results.take();
}

void ThreadWorkers::run(MainLoop::Task task, Priority priority) {
    auto work = std::make_unique<Work>(std::move(task), pool_->niceness, pool_->results);
    pool_->threads.start(work.release(), static_cast<int>(priority));
}

}  // namespace veloran
