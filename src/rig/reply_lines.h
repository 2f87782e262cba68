#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "rig/block_text.h"

namespace veloran {

/// What a server's announcement of its dialect begins with.
inline constexpr std::string_view kAnnouncementKey = "SAT_PROTO=";

/// The lines of a reply before its code, in order and without a limit; one costs its bytes and its
/// line end.
class ReplyLines {
  public:
    void add(std::string_view line);
    /// A long line is taken over; a short one is copied, and left for the caller to let go of.
    void add(BlockText& line);

    bool empty() const { return count_ == 0; }
    std::size_t size() const { return count_; }
    /// A copy of each. Costs time and memory in proportion to all of them.
    std::vector<std::string> all() const;
    /// What follows kAnnouncementKey in the first line that begins with it; empty if that line is
    /// longer than any number. Noted as it came, for it may stand among millions of lines.
    const std::optional<std::string>& announcement() const { return announcement_; }

    /// Leaves nothing.
    BlockText takeText();

  private:
    BlockText text_;  // each line with a line feed
    std::size_t count_ = 0;
    std::optional<std::string> announcement_;
};

}  // namespace veloran
