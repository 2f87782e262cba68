#include "qt/qt_main_loop.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QPointer>
#include <algorithm>
#include <chrono>
#include <utility>

#include "qt/fine_timer.h"
#include "qt/handover.h"

namespace veloran {

namespace {

using SteadyClock = std::chrono::steady_clock;
using Nanoseconds = std::chrono::nanoseconds;

class TaskEvent final : public QEvent {
  public:
    static Type eventType() {
        static const auto type = static_cast<Type>(registerEventType());
        return type;
    }
    explicit TaskEvent(MainLoop::Task task) : QEvent(eventType()), task_(std::move(task)) {}
    void run() const {
        if (task_) task_();
    }

  private:
    MainLoop::Task task_;
};

/// Within [least, 100 years]; what is no number is the least.
Nanoseconds waitOf(double seconds, Nanoseconds least) {
    constexpr double kLongest = 100 * 365.25 * 86400;
    if (!(seconds > 0)) return least;
    const std::chrono::duration<double> wait(std::min(seconds, kLongest));
    return std::max(least, std::chrono::duration_cast<Nanoseconds>(wait));
}

class RepeatingTimer final : public Timer {
  public:
    RepeatingTimer(QObject& parent, Nanoseconds interval, MainLoop::Task task)
        : timer_(new FineTimer(&parent)) {
        const auto first = SteadyClock::now() + interval;
        // The connection owns this action and Qt keeps it for the length of a call, so the task
        // may destroy the timer that runs it.
        auto onTimeout = [timer = timer_.data(), interval, due = first,
                          task = std::move(task)]() mutable {
            due += ((SteadyClock::now() - due) / interval + 1) * interval;
            timer->startUntil(due);
            task();
        };
        QObject::connect(timer_, &FineTimer::timeout, timer_, std::move(onTimeout));
        timer_->startUntil(first);
    }

    ~RepeatingTimer() override {
        if (!timer_) return;
        timer_->stop();
        timer_->disconnect();
        timer_->deleteLater();
    }

  private:
    QPointer<FineTimer> timer_;
};

}  // namespace

class QtMainLoop::Receiver final : public QObject {
  public:
    void post(Task task) {
        auto event = std::make_unique<TaskEvent>(std::move(task));
        handover_.give();
        QCoreApplication::postEvent(this, event.release());
    }

    bool event(QEvent* event) override {
        handover_.take();
        if (event->type() != TaskEvent::eventType()) return QObject::event(event);
        static_cast<TaskEvent*>(event)->run();
        return true;
    }

  private:
    Handover handover_;
};

QtMainLoop::QtMainLoop() : receiver_(std::make_unique<Receiver>()) {}
QtMainLoop::~QtMainLoop() = default;

void QtMainLoop::post(Task task) {
    receiver_->post(std::move(task));
}

void QtMainLoop::after(double seconds, Task task) {
    auto* timer = new FineTimer(receiver_.get());
    QObject::connect(timer, &FineTimer::timeout, timer, [timer, task = std::move(task)] {
        timer->deleteLater();
        task();
    });
    timer->startUntil(SteadyClock::now() + waitOf(seconds, Nanoseconds::zero()));
}

std::unique_ptr<Timer> QtMainLoop::every(double seconds, Task task) {
    constexpr Nanoseconds kShortest = std::chrono::milliseconds(1);
    return std::make_unique<RepeatingTimer>(*receiver_, waitOf(seconds, kShortest),
                                            std::move(task));
}

}  // namespace veloran
