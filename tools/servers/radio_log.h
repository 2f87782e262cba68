#pragma once

#include <cstddef>
#include <deque>
#include <string>

#include "base/instant.h"
#include "servers/radio_dialect.h"

namespace veloran {

/// One line of what passed between the radio and its clients.
struct RadioLogLine {
    enum class Kind { received, sent, note };

    Instant at;
    Kind kind = Kind::note;
    RadioDialect::ClientId client = 0;  ///< counted from 1
    std::string text;                   ///< without its line end

    bool operator==(const RadioLogLine&) const = default;
};

/// "2026-03-01T12:00:00.123Z #1 < \sat_caps": the time in UTC, the client, ">" for what the radio
/// sent, "<" for what it received, "." for what happened to it.
std::string logText(const RadioLogLine& line);

/// The latest lines, in order. The oldest are forgotten as soon as all together take more than
/// `mostBytes`; the latest one always stays.
class RadioLog {
  public:
    static constexpr std::size_t kMostBytes = 32'000'000;

    explicit RadioLog(std::size_t mostBytes = kMostBytes) : mostBytes_(mostBytes) {}

    const RadioLogLine& add(RadioLogLine line);
    const std::deque<RadioLogLine>& lines() const { return lines_; }

    /// What a line counts, with its place in the list.
    static std::size_t bytesOf(const RadioLogLine& line) {
        return sizeof(RadioLogLine) + line.text.size();
    }

  private:
    std::deque<RadioLogLine> lines_;
    std::size_t bytes_ = 0;
    std::size_t mostBytes_;
};

}  // namespace veloran
