#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "base/instant.h"
#include "support/true_passes.h"

namespace veloran::test {

// What an unattended time has to bring, told a second time: passes by a plain search, and the queue
// as a loop over seconds. The program's lists of passes have no part in it.

/// One line of veloran-rehearse.
struct RehearsedEvent {
    std::string event;
    Instant at;
    std::string satellite;
    Instant rise;
    Instant set;
    double maxElevation = 0;
    std::string why;

    TruePass pass() const { return {rise, set, maxElevation, set}; }
};

/// Fails the test for a line of any other form.
RehearsedEvent readEvent(const std::string& line);

/// Degrees north and east, metres.
struct Site {
    double latitude = 0;
    double longitude = 0;
    double altitude = 0;
};

/// The whole passes of all satellites by one set of elements, in force from `since` on. Names tell
/// the satellites apart.
struct TrueSky {
    Instant since;
    std::map<std::string, std::vector<TruePass>> passes;

    /// The pass that overlaps; null without one.
    const TruePass* find(const std::string& satellite, const TruePass& pass) const;
};

/// Searches from `from` to `to`; what is up at either end is left out.
TrueSky trueSky(const std::string& elements, const Site& site, Instant since, Instant from,
                Instant to);

/// What the program went through.
struct Unattended {
    std::vector<TrueSky> skies;  ///< in the order in which they were in force; never empty
    /// What the clock shows when so many seconds have gone by. The queue looks each second.
    std::function<Instant(std::int64_t second)> clock;
    std::int64_t seconds = 0;
    double minElevation = 5;
    bool sleeps = false;  ///< whether the clock leaps over passes

    const TrueSky& skyAt(Instant t) const;
    Instant start() const { return clock(0); }
    Instant end() const { return clock(seconds); }
};

struct Totals {
    std::size_t queued = 0;
    std::size_t conflicts = 0;
    std::size_t due = 0;  ///< sessions that the plain queue holds
    std::size_t started = 0;
    std::size_t ended = 0;
    std::size_t skipped = 0;
};

/// Compares events with what had to be:
/// - each whole pass was marked once, or refused once for one that overlaps and is marked;
/// - each marked pass that is high enough had a session from the first look inside to the first
/// look
///   at or after its set, and each other one was skipped for its height.
Totals expectAsPlain(const std::vector<RehearsedEvent>& events, const Unattended& unattended);

/// For a time without jumps and without new elements: each pass was marked by the first search,
/// every 300 s, that saw the whole of it, in the order of their rise, if it was free.
void expectMarkedAtOnce(const std::vector<RehearsedEvent>& events, const Unattended& unattended);

}  // namespace veloran::test
