#include "qt/thread_workers.h"

#include <QRunnable>
#include <QThread>
#include <QThreadPool>
#include <algorithm>
#include <utility>

#include "qt/handover.h"

namespace veloran {

struct ThreadWorkers::Pool {
    Handover handover;
    QThreadPool threads;
};

namespace {

class Work final : public QRunnable {
  public:
    Work(MainLoop::Task task, Handover& handover) : task_(std::move(task)), handover_(handover) {}

    void run() override {
        handover_.take();
        task_();
        task_ = nullptr;  // what it holds goes before the end of the pool counts it as done
        handover_.give();
    }

  private:
    MainLoop::Task task_;
    Handover& handover_;
};

}  // namespace

ThreadWorkers::ThreadWorkers() : ThreadWorkers(QThread::idealThreadCount()) {}

ThreadWorkers::ThreadWorkers(int threads) : pool_(std::make_unique<Pool>()) {
    pool_->threads.setMaxThreadCount(std::max(threads, 1));
}

ThreadWorkers::~ThreadWorkers() {
    pool_->threads.clear();
    pool_->threads.waitForDone();
    pool_->handover.take();
}

void ThreadWorkers::run(MainLoop::Task task) {
    auto work = std::make_unique<Work>(std::move(task), pool_->handover);
    pool_->handover.give();
    pool_->threads.start(work.release());
}

}  // namespace veloran
