#pragma once

#include <compare>

namespace veloran {

/// Seconds between 1970-01-01 and 2001-01-01, both 00:00:00 UTC.
inline constexpr double kUnixToReferenceSeconds = 978307200.0;

/// A moment: seconds since 2001-01-01 00:00:00 UTC, leap seconds not counted. Differences of two
/// moments are plain seconds. UTC stands for UT1 everywhere in this program.
struct Instant {
    double secondsSinceReference = 0;

    static constexpr Instant fromUnixSeconds(double seconds) {
        return Instant{seconds - kUnixToReferenceSeconds};
    }
    constexpr double unixSeconds() const { return secondsSinceReference + kUnixToReferenceSeconds; }

    friend constexpr auto operator<=>(Instant, Instant) = default;
    friend constexpr double operator-(Instant a, Instant b) {
        return a.secondsSinceReference - b.secondsSinceReference;
    }
    friend constexpr Instant operator+(Instant t, double seconds) {
        return Instant{t.secondsSinceReference + seconds};
    }
    friend constexpr Instant operator-(Instant t, double seconds) {
        return Instant{t.secondsSinceReference - seconds};
    }
};

}  // namespace veloran
