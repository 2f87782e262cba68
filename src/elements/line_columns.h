#pragma once

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace veloran {

/// The columns of a line from left to right, in one buffer. Numbers look as {fmt} writes them; one
/// that needs more than its columns gets them.
class LineColumns {
  public:
    void text(std::string_view text);
    void character(char c) { columns_.push_back(c); }
    /// As "{:{width}d}", or "{:0{width}d}" with '0' as the filler.
    void integer(std::int64_t value, int width, char filler);
    /// As "{:{width}.{decimals}f}", or "{:0{width}.{decimals}f}"; 1 to 8 decimals.
    void fixed(double value, int width, int decimals, char filler);
    /// What was written behind the first `start` columns gets blanks at its end, or loses what is
    /// beyond `width` user-perceived characters.
    void fit(std::size_t start, std::size_t width);

    std::size_t size() const { return columns_.size(); }
    std::string_view view() const { return {columns_.data(), columns_.size()}; }

  private:
    fmt::memory_buffer columns_;
};

/// Whether each byte is a user-perceived character by itself: ASCII without carriage returns.
bool hasOneByteCharacters(std::string_view text);

}  // namespace veloran
