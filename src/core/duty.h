#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "base/instant.h"
#include "core/pass_queue.h"

namespace veloran {

/// What the program is bound to do by itself, with or without a window: the session that runs, and
/// the queued passes that it will still track. Closing, quitting and sleeping go by it.
struct Duty {
    struct Session {
        std::string satellite;
        std::optional<Instant> ends;  ///< set of the queued pass it follows; absent for one by hand

        bool operator==(const Session&) const = default;
    };
    std::optional<Session> session;
    std::size_t passesAhead = 0;        ///< queued, and not tracked yet
    std::optional<QueuedPassRef> next;  ///< the first of them; absent while none is predicted

    bool isAny() const { return session || passesAhead > 0; }
    bool operator==(const Duty&) const = default;
};

/// How long after its rise an entry without a pass still counts: it may be found again, by new
/// elements or by the search that follows a reload.
inline constexpr double kLostPassSeconds = 3600;

/// `tracked` is the name of the session's satellite, absent when none runs; `entries` are as
/// describeQueue gives them. What has set, is too low or is deselected binds nobody.
Duty dutyOf(const std::optional<std::string>& tracked, const std::vector<QueueEntry>& entries,
            Instant now);

/// How long a program without a window waits, once nothing is left to do, before it ends.
inline constexpr double kIdleInBackgroundSeconds = 60;

}  // namespace veloran
