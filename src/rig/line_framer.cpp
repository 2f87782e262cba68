#include "rig/line_framer.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace veloran {
namespace {

/// How many bytes at the end begin a character and do not complete it.
std::size_t incompleteEnd(std::string_view bytes) {
    constexpr std::size_t kLongestStart = 3;
    for (std::size_t back = 1; back <= std::min(bytes.size(), kLongestStart); ++back) {
        const auto byte = static_cast<unsigned char>(bytes[bytes.size() - back]);
        if ((byte & 0xC0) == 0x80) continue;  // not the first of its character
        const std::size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
        return length > back ? back : 0;
    }
    return 0;
}

std::string_view textOf(std::string_view line) {
    return isValidUtf8(line) ? trimmed(line, Blanks::withNewlines) : std::string_view();
}

}  // namespace

bool FramedLine::startsWith(std::string_view bytes) const {
    return isLong() ? longText.startsWith(bytes) : text.starts_with(bytes);
}

// ---- LineBounds

void LineBounds::push(std::string_view piece) {
    if (!isUtf8_) return;
    std::string joined;
    if (!tail_.empty()) piece = joined.append(tail_).append(piece);
    const auto whole = piece.substr(0, piece.size() - incompleteEnd(piece));
    isUtf8_ = isValidUtf8(whole);
    if (!isUtf8_) return;
    if (const auto text = trimmed(whole, Blanks::withNewlines); !text.empty()) {
        const auto at = taken_ + static_cast<std::size_t>(text.data() - whole.data());
        if (end_ == 0) begin_ = at;
        end_ = at + text.size();
    }
    taken_ += whole.size();
    tail_ = piece.substr(whole.size());
}

// ---- LineFramer

std::optional<FramedLine> LineFramer::takeLine(std::string_view& bytes) {
    std::string().swap(joined_);  // it may be large
    const auto end = bytes.find('\n');
    const auto piece = bytes.substr(0, end);
    if (end == std::string_view::npos) {
        bytes = {};
        keep(piece);
        return std::nullopt;
    }
    bytes.remove_prefix(end + 1);
    if (partial_.size() == 0) return FramedLine{.text = textOf(piece), .longText = {}};
    keep(piece);
    return joinedLine();
}

void LineFramer::keep(std::string_view piece) {
    partial_.append(piece);
    bounds_.push(piece);
}

FramedLine LineFramer::joinedLine() {
    const auto bounds = std::exchange(bounds_, {});
    auto line = std::exchange(partial_, {});
    const bool isLong = line.size() >= BlockText::kLong;
    if (bounds.isUtf8()) {
        line.cut(bounds.begin(), bounds.end());
    } else {
        line.cut(0, 0);
    }
    if (isLong) return {.text = {}, .longText = std::move(line)};
    joined_ = line.text();
    return {.text = joined_, .longText = {}};
}

BlockText LineFramer::clear() {
    bounds_ = {};
    return std::exchange(partial_, {});
}

}  // namespace veloran
