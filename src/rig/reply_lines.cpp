#include "rig/reply_lines.h"

#include <utility>

namespace veloran {

void ReplyLines::add(std::string_view line) {
    if (!announcement_ && line.starts_with(kAnnouncementKey)) {
        announcement_ = line.substr(kAnnouncementKey.size());
    }
    text_.append(line);
    text_.append("\n");
    ++count_;
}

void ReplyLines::add(BlockText& line) {
    if (line.size() < BlockText::kLong) return add(line.text());
    if (!announcement_ && line.startsWith(kAnnouncementKey)) announcement_ = "";
    text_.append(std::exchange(line, {}));
    text_.append("\n");
    ++count_;
}

std::vector<std::string> ReplyLines::all() const {
    const auto whole = text_.text();
    std::vector<std::string> lines;
    lines.reserve(count_);
    std::string_view rest = whole;
    while (!rest.empty()) {
        const auto end = rest.find('\n');
        lines.emplace_back(rest.substr(0, end));
        rest.remove_prefix(end + 1);
    }
    return lines;
}

BlockText ReplyLines::takeText() {
    count_ = 0;
    announcement_ = std::nullopt;
    return std::exchange(text_, {});
}

}  // namespace veloran
