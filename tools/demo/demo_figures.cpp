#include "demo/demo_figures.h"

#include <fmt/format.h>
#include <sys/resource.h>

#include <algorithm>

namespace veloran {
namespace {

constexpr double kFrameMilliseconds = 33;

/// "1200 values, median 0.21, p99 1.80, longest 3.02 ms".
std::string spread(std::vector<double> values) {
    if (values.empty()) return "none";
    std::ranges::sort(values);
    const auto at = [&values](double share) {
        return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
    };
    return fmt::format("{} values, median {:.2f}, p99 {:.2f}, longest {:.2f} ms", values.size(),
                       at(0.5), at(0.99), values.back());
}

}  // namespace

double processorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

DemoFigures::DemoFigures(WatchedApplication& application, WatchedLoop& loop, double rateHz)
    : application_(application), loop_(loop) {
    loop_.watchInterval(1 / rateHz);
    begin();
}

void DemoFigures::begin() {
    loop_.forget();
    application_.forget();
    begun_ = std::chrono::steady_clock::now();
    processorAtBegin_ = processorSeconds();
}

std::string DemoFigures::report() const {
    const std::chrono::duration<double> span = std::chrono::steady_clock::now() - begun_;
    const double used = processorSeconds() - processorAtBegin_;
    const auto tooLong = std::ranges::count_if(application_.eventTimes(), [](double milliseconds) {
        return milliseconds > kFrameMilliseconds;
    });
    return fmt::format(
        "{:<12}{:.1f} s, {:.1f} % of a core\n{:<12}{}\n{:<12}{}, {} over {:.0f} ms\n", "measured",
        span.count(), 100 * used / span.count(), "tick late", spread(loop_.lateness()), "events",
        spread(application_.eventTimes()), tooLong, kFrameMilliseconds);
}

}  // namespace veloran
