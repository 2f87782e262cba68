#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "rig/block_text.h"

namespace veloran {

/// A line, trimmed of blanks and newlines at both ends, empty when it is not UTF-8.
struct FramedLine {
    std::string_view text;  ///< lives until the framer's next call; empty when the line is long
    BlockText longText;     ///< a line that came in BlockText::kLong bytes and more; else nothing

    bool isLong() const { return !longText.isReleased(); }
    bool startsWith(std::string_view bytes) const;
};

/// Where the trimmed text of a line begins and ends that comes in pieces, and whether it is UTF-8.
/// Looks at each byte once, so that the end of a long line costs nothing.
class LineBounds {
  public:
    void push(std::string_view piece);
    bool isUtf8() const { return isUtf8_ && tail_.empty(); }
    std::size_t begin() const { return begin_; }  // both 0 as long as all is blank
    std::size_t end() const { return end_; }

  private:
    std::size_t taken_ = 0;  // bytes of whole characters so far
    std::string tail_;       // the bytes of a character that are not all there, at most three
    bool isUtf8_ = true;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
};

/// Bytes to lines. A line ends at 0x0A. What has no line end yet waits, without a limit.
class LineFramer {
  public:
    /// Takes bytes off the front of `bytes`, to the next line end or all, and gives the line ended.
    std::optional<FramedLine> takeLine(std::string_view& bytes);
    /// Forgets what waits, and gives it.
    BlockText clear();
    std::string buffered() const { return partial_.text(); }

  private:
    void keep(std::string_view piece);
    FramedLine joinedLine();

    BlockText partial_;  // bytes behind the last line end
    LineBounds bounds_;  // of the text in them
    std::string joined_;  // the line given last, if it came in pieces
};

}  // namespace veloran
