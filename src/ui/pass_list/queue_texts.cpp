#include "ui/pass_list/queue_texts.h"

#include <fmt/format.h>

#include <algorithm>

#include "ui/formats.h"

namespace veloran {

namespace {

constexpr std::size_t kMostLines = 20;

struct Line {
    Instant rise;
    std::string text;
};

Line lineOf(const QueueEntry& entry,
            const std::function<std::string(std::int64_t noradId)>& nameOf) {
    const Instant rise =
        entry.pass ? entry.pass->riseTime : passQueueRise(entry.id).value_or(Instant{});
    const std::int64_t number = passQueueNumber(entry.id).value_or(0);
    std::string name = entry.pass ? entry.pass->satName : nameOf(number);
    if (name.empty()) name = fmt::format("{}", number);
    return {rise, fmt::format("{} {}: {}", listTime(rise), name, queueEntryText(entry.state))};
}

}  // namespace

std::string queueHelp(const std::vector<QueueEntry>& entries,
                      const std::function<std::string(std::int64_t noradId)>& nameOf) {
    std::vector<Line> lines;
    for (const auto& entry : entries) lines.push_back(lineOf(entry, nameOf));
    std::ranges::stable_sort(lines, {}, &Line::rise);
    std::string help;
    for (std::size_t i = 0; i < std::min(lines.size(), kMostLines); ++i) {
        help += (i == 0 ? "" : "\n") + lines[i].text;
    }
    if (lines.size() > kMostLines) {
        help += fmt::format("\nand {} more", lines.size() - kMostLines);
    }
    return help;
}

}  // namespace veloran
