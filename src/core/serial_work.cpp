#include "core/serial_work.h"

#include <utility>

namespace veloran {

struct SerialWork::Line : std::enable_shared_from_this<Line> {
    explicit Line(const Machine& on) : machine(on) {}

    struct Work {
        std::function<void()> task;
        std::function<void()> done;
    };

    void begin() {
        machine.workers.run(
            [self = shared_from_this(), task = std::move(waiting.front().task)]() mutable {
                task();
                task = nullptr;
                // Moved, so that the line is let go on the main thread.
                self->machine.loop.post([line = std::move(self)] { line->finish(); });
            });
    }

    void finish() {
        const auto done = std::move(waiting.front().done);
        waiting.pop_front();
        if (!waiting.empty()) begin();
        if (done) done();
    }

    Machine machine;
    std::deque<Work> waiting;  // the first one is running
};

SerialWork::SerialWork(const Machine& machine) : line_(std::make_shared<Line>(machine)) {}

void SerialWork::run(std::function<void()> task, std::function<void()> done) {
    line_->waiting.push_back({std::move(task), std::move(done)});
    if (line_->waiting.size() == 1) line_->begin();
}

}  // namespace veloran
