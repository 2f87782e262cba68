#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "base/instant.h"

namespace veloran {

struct RehearsalOptions {
    std::string file;  ///< of the elements; "-" is the standard input
    double latitude = 0;
    double longitude = 0;
    double altitude = 0;
    Instant start;
    std::int64_t seconds = 0;  ///< length, at least 1
    std::optional<double> minElevation;
    std::optional<double> refreshHours;
};

enum class RehearsalHelp { usage, version };
/// What is wrong with a command line, in words.
struct RehearsalRefusal {
    std::string reason;
};

/// Options of the command line without the program's name, as "--days 7" or "--days=7"; of one
/// given twice the last counts.
std::variant<RehearsalOptions, RehearsalHelp, RehearsalRefusal> readRehearsalOptions(
    std::span<const std::string_view> arguments);

/// "2026-11-20T00:00:00Z"; absent for any other form, and for a moment that no calendar has.
std::optional<Instant> parseUtc(std::string_view text);

extern const std::string_view kRehearsalUsage;

}  // namespace veloran
