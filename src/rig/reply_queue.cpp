#include "rig/reply_queue.h"

#include <string_view>
#include <utility>

#include "base/text.h"

namespace veloran {
namespace {

constexpr std::string_view kReport = "RPRT ";
constexpr std::int64_t kNotANumber = -999;

}  // namespace

void ReplyQueue::expect(ReplyCompletion completion) {
    pending_.push_back(std::move(completion));
}

std::optional<ReplyQueue::Answer> ReplyQueue::dispatch(std::string line) {
    if (pending_.empty()) return std::nullopt;
    if (!line.starts_with(kReport)) {
        lines_.push_back(std::move(line));
        return std::nullopt;
    }
    auto completion = std::move(pending_.front());
    pending_.pop_front();
    auto lines = std::exchange(lines_, {});
    // "END" ends nothing: servers send it before the report, and only the report counts.
    std::erase(lines, "END");
    const auto code = parseInt64(std::string_view(line).substr(kReport.size()));
    return Answer{std::move(completion), code.value_or(kNotANumber), std::move(lines)};
}

ReplyQueue::Waiting ReplyQueue::flush() {
    lines_.clear();
    return std::exchange(pending_, {});
}

}  // namespace veloran
