#include "rig/reply_queue.h"

#include <string_view>
#include <utility>

#include "base/text.h"

namespace veloran {
namespace {

constexpr std::string_view kReport = "RPRT ";
// Ends nothing: servers send it before the report, and only the report counts.
constexpr std::string_view kEnd = "END";
constexpr std::int64_t kNotANumber = -999;

}  // namespace

void ReplyQueue::expect(ReplyCompletion completion) {
    pending_.push_back(std::move(completion));
}

std::optional<ReplyQueue::Answer> ReplyQueue::dispatch(FramedLine& line) {
    if (pending_.empty()) return std::nullopt;
    if (!line.startsWith(kReport)) {
        keep(line);
        return std::nullopt;
    }
    auto completion = std::move(pending_.front());
    pending_.pop_front();
    // No code fills a long line.
    const auto code = line.isLong() ? std::nullopt : parseInt64(line.text.substr(kReport.size()));
    return Answer{std::move(completion), code.value_or(kNotANumber), std::exchange(lines_, {})};
}

void ReplyQueue::keep(FramedLine& line) {
    if (line.isLong()) {
        lines_.add(line.longText);
    } else if (line.text != kEnd) {
        lines_.add(line.text);
    }
}

ReplyQueue::Waiting ReplyQueue::flush() {
    lines_ = {};
    return std::exchange(pending_, {});
}

}  // namespace veloran
