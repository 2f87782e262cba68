#include "rig/line_framer.h"

#include "base/text.h"

namespace veloran {

std::vector<std::string> LineFramer::push(std::string_view bytes) {
    buffer_ += bytes;
    std::vector<std::string> lines;
    std::size_t begin = 0;  // of the line being looked for
    for (auto end = buffer_.find('\n', searched_); end != std::string::npos;
         end = buffer_.find('\n', begin)) {
        const auto line = std::string_view(buffer_).substr(begin, end - begin);
        lines.emplace_back(isValidUtf8(line) ? trimmed(line, Blanks::withNewlines)
                                             : std::string_view());
        begin = end + 1;
    }
    buffer_.erase(0, begin);
    searched_ = buffer_.size();
    return lines;
}

void LineFramer::clear() {
    // A new string, so that the memory of an endless line goes with its connection.
    buffer_ = std::string();
    searched_ = 0;
}

}  // namespace veloran
