#include "demo/demo_figures.h"

#include <fmt/format.h>

#include <algorithm>

#include "demo/process_figures.h"

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
    const auto& painted = application_.firstPaint();
    std::string text;
    const auto line = [&text](const char* name, const std::string& value) {
        text += fmt::format("{:<12}{}\n", name, value);
    };
    line("window", painted ? fmt::format("painted {:.0f} ms after the start", 1000 * *painted)
                           : std::string("never painted"));
    line("measured",
         fmt::format("{:.1f} s, {:.1f} % of a core", span.count(), 100 * used / span.count()));
    line("tick late", spread(loop_.lateness()));
    line("events", fmt::format("{}, {} over {:.0f} ms", spread(application_.eventTimes()), tooLong,
                               kFrameMilliseconds));
    line("memory", memoryText());
    return text;
}

}  // namespace veloran
