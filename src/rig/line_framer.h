#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veloran {

/// Bytes to lines. A line ends at 0x0A, is trimmed of blanks and newlines at both ends, and reads
/// as empty when it is not UTF-8. What has no line end yet waits, without a limit.
class LineFramer {
  public:
    std::vector<std::string> push(std::string_view bytes);
    void clear();
    const std::string& buffered() const { return buffer_; }

  private:
    std::string buffer_;
    std::size_t searched_ = 0;  // bytes of the buffer known to hold no line end
};

}  // namespace veloran
