#include "app/quit_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <array>
#include <csignal>
#include <utility>

namespace veloran {

namespace {

constexpr std::array kSignals{SIGTERM, SIGHUP, SIGINT};

std::array<int, 2> ends{-1, -1};  // of a pipe: to read, to write

/// A handler may do next to nothing: it leaves word for the event loop.
void leaveWord(int) {
    const char word = 0;
    [[maybe_unused]] const auto written = write(ends[1], &word, 1);
}

}  // namespace

QuitSignals::QuitSignals() {
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    arrived_.emplace(ends[0], QSocketNotifier::Read);
    QObject::connect(&*arrived_, &QSocketNotifier::activated, &*arrived_, [this] {
        arrived_->setEnabled(false);
        QCoreApplication::exit(0);
    });
    for (const int number : kSignals) std::signal(number, leaveWord);
}

QuitSignals::~QuitSignals() {
    if (!arrived_) return;
    for (const int number : kSignals) std::signal(number, SIG_DFL);
    arrived_.reset();
    for (int& end : ends) close(std::exchange(end, -1));
}

}  // namespace veloran
