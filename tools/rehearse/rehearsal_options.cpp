#include "rehearse/rehearsal_options.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <map>

#include "base/calendar.h"
#include "base/text.h"

namespace veloran {

const std::string_view kRehearsalUsage =
    R"(Usage: veloran-rehearse --elements FILE --site LAT,LON,METRES
                        --start 2026-11-20T00:00:00Z --days N [OPTION]...

Plays an unattended time through on a simulated clock: Veloran itself, tracking
all satellites of FILE, with each pass queued as soon as it is listed whole.
What became of each pass is printed as one JSON object a line, in order of time.

  --elements FILE        two- or three-line element sets, or orbit mean-elements
                         messages in JSON; - is the standard input
  --site LAT,LON,METRES  degrees north and east, metres above the sea
  --start TIME           UTC, as in 2026-11-20T00:00:00Z
  --days N               how long, up to 366; may have a fraction
  --min-elevation DEG    passes that stay lower are not tracked (5)
  --refresh-every HOURS  load the elements anew with this period
  --help                 print this text and end
  --version              print the version and end

Lines: {"event":E,"at":T,"satellite":NAME,"rise":T,"set":T,"maxElevation":DEG,"why":TEXT}
E is queued, conflict (a queued pass overlaps; that one stays), started, ended,
or skipped. Times are seconds since 1970-01-01 00:00:00 UTC.
)";

namespace {

constexpr double kDaySeconds = 86400;
constexpr double kMostDays = 366;
constexpr std::array kNames{"elements", "site", "start", "days", "min-elevation", "refresh-every"};
constexpr std::array kNeeded{"elements", "site", "start", "days"};

using Values = std::map<std::string, std::string, std::less<>>;
using Refusal = RehearsalRefusal;

template <class List>
bool contains(const List& list, std::string_view name) {
    for (const std::string_view each : list) {
        if (each == name) return true;
    }
    return false;
}

Refusal refusal(std::string_view option, std::string_view value, std::string_view expected) {
    return {fmt::format("--{} \"{}\": expected {}", option, value, expected)};
}

std::variant<Values, RehearsalHelp, Refusal> collect(std::span<const std::string_view> arguments) {
    Values values;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto argument = arguments[i];
        if (argument == "--help" || argument == "-h") return RehearsalHelp::usage;
        if (argument == "--version") return RehearsalHelp::version;
        if (!argument.starts_with("--")) {
            return Refusal{fmt::format("unexpected argument \"{}\"", argument)};
        }
        const auto equals = argument.find('=');
        const auto name = argument.substr(2, equals == argument.npos ? equals : equals - 2);
        if (!contains(kNames, name)) return Refusal{fmt::format("unknown option --{}", name)};
        if (equals != argument.npos) {
            values[std::string(name)] = argument.substr(equals + 1);
        } else if (i + 1 < arguments.size()) {
            values[std::string(name)] = arguments[++i];
        } else {
            return Refusal{fmt::format("--{} needs a value", name)};
        }
    }
    for (const std::string_view name : kNeeded) {
        if (!values.contains(name)) return Refusal{fmt::format("--{} is missing", name)};
    }
    return values;
}

std::optional<double> numberWithin(std::string_view text, double lowest, double highest) {
    const auto value = parseDouble(text);
    return value && *value >= lowest && *value <= highest ? value : std::nullopt;
}

bool readSite(std::string_view text, RehearsalOptions& options) {
    const auto parts = split(text, ',');
    if (parts.size() != 3) return false;
    const auto latitude = numberWithin(parts[0], -90, 90);
    const auto longitude = numberWithin(parts[1], -180, 360);
    const auto altitude = numberWithin(parts[2], -1000, 10000);
    if (!latitude || !longitude || !altitude) return false;
    options.latitude = *latitude;
    options.longitude = *longitude;
    options.altitude = *altitude;
    return true;
}

/// The decimal digits at a place of fixed width.
std::optional<std::int64_t> digits(std::string_view text, std::size_t at, std::size_t count) {
    const auto part = text.substr(at, count);
    if (part.find_first_not_of("0123456789") != part.npos) return std::nullopt;
    return parseInt64(part);
}

}  // namespace

std::optional<Instant> parseUtc(std::string_view text) {
    constexpr std::string_view kForm = "0000-00-00T00:00:00Z";
    if (text.size() != kForm.size()) return std::nullopt;
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        if (kForm[i] != '0' && text[i] != kForm[i]) return std::nullopt;
    }
    const auto year = digits(text, 0, 4), month = digits(text, 5, 2), day = digits(text, 8, 2);
    const auto hour = digits(text, 11, 2), minute = digits(text, 14, 2),
               second = digits(text, 17, 2);
    if (!year || !month || !day || !hour || !minute || !second) return std::nullopt;
    if (*hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
    const auto midnight = instantFromDate(*year, *month, *day);
    if (!midnight) return std::nullopt;
    const auto civil = civilTime(*midnight);  // 30 February has rolled over
    if (civil.year != *year || civil.month != *month || civil.day != *day) return std::nullopt;
    return *midnight + static_cast<double>(*hour * 3600 + *minute * 60 + *second);
}

std::variant<RehearsalOptions, RehearsalHelp, RehearsalRefusal> readRehearsalOptions(
    std::span<const std::string_view> arguments) {
    const auto collected = collect(arguments);
    if (const auto* help = std::get_if<RehearsalHelp>(&collected)) return *help;
    if (const auto* wrong = std::get_if<Refusal>(&collected)) return *wrong;
    const auto& values = std::get<Values>(collected);
    const auto text = [&values](std::string_view name) -> const std::string& {
        return values.find(name)->second;
    };

    RehearsalOptions options;
    options.file = text("elements");
    if (!readSite(text("site"), options)) {
        return refusal("site", text("site"), "LAT,LON,METRES as in 52.52,13.41,40");
    }
    const auto start = parseUtc(text("start"));
    if (!start) return refusal("start", text("start"), "a UTC time as in 2026-11-20T00:00:00Z");
    options.start = *start;
    const auto days = numberWithin(text("days"), 0, kMostDays);
    options.seconds = static_cast<std::int64_t>(days.value_or(0) * kDaySeconds);
    if (options.seconds < 1) return refusal("days", text("days"), "a number above 0 and up to 366");
    if (values.contains("min-elevation")) {
        options.minElevation = numberWithin(text("min-elevation"), 0, 90);
        if (!options.minElevation) {
            return refusal("min-elevation", text("min-elevation"), "degrees from 0 to 90");
        }
    }
    if (values.contains("refresh-every")) {
        options.refreshHours = numberWithin(text("refresh-every"), 0.1, kMostDays * 24);
        if (!options.refreshHours) {
            return refusal("refresh-every", text("refresh-every"), "hours, 0.1 and more");
        }
    }
    return options;
}

}  // namespace veloran
