#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>

#include "rig/line_framer.h"
#include "rig/reply_lines.h"

namespace veloran {

/// Gets the server's code and the lines before it. -1: the connection went; -999: no number.
using ReplyCompletion = std::function<void(std::int64_t code, const ReplyLines& lines)>;

/// Lines to answers: the protocol has no sequence numbers, so a reply belongs to the oldest command
/// that waits for one. Nothing else of the program knows that order.
class ReplyQueue {
  public:
    /// A finished command: what to call, and with what. The caller decides when.
    struct Answer {
        ReplyCompletion completion;
        std::int64_t code = 0;
        ReplyLines lines;
    };

    using Waiting = std::deque<ReplyCompletion>;

    /// What a command whose connection went is answered with, and no lines.
    static constexpr std::int64_t kConnectionGone = -1;

    void expect(ReplyCompletion completion);
    /// A line that ends the oldest command gives its answer. Lines nobody waits for are dropped.
    /// Of a long line, what is not kept is left in it.
    std::optional<Answer> dispatch(FramedLine& line);
    /// Takes out every waiting command, oldest first, to be answered with kConnectionGone: without
    /// a copy, for they may fill much of the memory.
    Waiting flush();
    /// Takes out the lines that the oldest command has so far.
    BlockText takeLines() { return lines_.takeText(); }
    std::size_t size() const { return pending_.size(); }

  private:
    void keep(FramedLine& line);

    // Without a limit, so of each only what has to be kept; lines come for the oldest alone.
    Waiting pending_;
    ReplyLines lines_;
};

}  // namespace veloran
