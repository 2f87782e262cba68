#include "ui/formats.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <ctime>

#include "base/checked.h"
#include "core/pass_info.h"

namespace veloran {

namespace {

constexpr std::string_view kNone = "—";

/// The integer part, kept as a double: it holds what no integer type does. Never a negative zero.
double whole(double value) {
    return std::trunc(value) + 0.0;
}

std::string signedText(double value, int decimals, std::string_view unit) {
    if (!std::isfinite(value)) return std::string(kNone);
    return fmt::format("{:+.{}f}{}", value, decimals, unit);
}

std::optional<std::tm> localTime(Instant t) {
    const double unixSeconds = std::floor(t.unixSeconds());
    if (!fitsInt64(unixSeconds)) return std::nullopt;
    const std::time_t seconds = checkedInt64(unixSeconds);
    std::tm local{};
    if (!localtime_r(&seconds, &local)) return std::nullopt;
    return local;
}

}  // namespace

std::string numberText(double value, int decimals, std::string_view unit) {
    if (!std::isfinite(value)) return std::string(kNone);
    return fmt::format("{:.{}f}{}", value, decimals, unit);
}

std::string formatBigFreq(double hz) {
    if (hz == 0 || !std::isfinite(hz)) return std::string(kNone);
    return fmt::format("{:.0f}.{:03.0f}.{:03.0f}", whole(hz / 1e6), whole(std::fmod(hz, 1e6) / 1e3),
                       whole(std::fmod(hz, 1e3)));
}

std::string formatMHz(double hz) {
    if (hz == 0) return std::string(kNone);
    return numberText(hz / 1e6, 6, " MHz");
}

std::string formatHzSigned(double hz) {
    if (std::abs(hz) < 0.5) return "0 Hz";
    return signedText(hz, 0, " Hz");
}

std::string rateText(double hzPerS) {
    return signedText(hzPerS, 1, " Hz/s");
}

std::string updateRateText(double hz) {
    return numberText(hz, 0, " Hz");
}

double rxSatOutputFreq(std::optional<double> centerHz, double passbandOffset, double calibration) {
    return centerHz ? *centerHz + passbandOffset + calibration : 0;
}

double txSatInputFreq(std::optional<double> uplinkCenterHz, double passbandOffset, bool inverting) {
    if (!uplinkCenterHz) return 0;
    return inverting ? *uplinkCenterHz - passbandOffset : *uplinkCenterHz + passbandOffset;
}

std::string azimuthText(double degrees) {
    return numberText(degrees, 1, "°");
}

std::string rangeText(double km) {
    return numberText(km, 0, " km");
}

std::string elevationText(double degrees) {
    return numberText(degrees, 0, "°");
}

Ink elevationColor(double degrees) {
    if (degrees >= 60) return Ink::green;
    if (degrees >= 30) return Ink::yellow;
    if (degrees >= 15) return Ink::orange;
    return Ink::secondary;
}

std::string compassDir(double azimuth) {
    static constexpr std::array<const char*, 8> names = {"N", "NE", "E", "SE",
                                                         "S", "SW", "W", "NW"};
    if (!std::isfinite(azimuth)) return std::string(kNone);
    double turned = std::fmod(azimuth + 22.5, 360);
    if (turned < 0) turned += 360;
    return names[static_cast<std::size_t>(turned / 45) % names.size()];
}

std::string listDirection(std::span<const PassPoint> trackPoints) {
    if (trackPoints.size() < 2) return {};
    return compassDir(trackPoints.front().azimuth) + "-" + compassDir(trackPoints.back().azimuth);
}

std::string relativeTime(double secondsAhead) {
    if (secondsAhead < 0) return "now";
    if (!std::isfinite(secondsAhead)) return std::string(kNone);
    const double minutes = whole(secondsAhead / 60);
    const double hours = whole(minutes / 60);
    if (hours > 0) return fmt::format("in {:.0f}h {:.0f}m", hours, std::fmod(minutes, 60));
    return fmt::format("in {:.0f}m", minutes);
}

std::string formatDuration(double seconds) {
    if (!std::isfinite(seconds)) return std::string(kNone);
    const double total = whole(seconds);
    return fmt::format("{:.0f}m{:02.0f}s", whole(total / 60), std::fmod(total, 60) + 0.0);
}

std::string listTime(Instant t) {
    return calendarTime(t, false);
}

std::string calendarTime(Instant t, bool withDay) {
    static constexpr std::array<const char*, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const auto local = localTime(t);
    if (!local) return std::string(kNone);
    const std::string clock = fmt::format("{:02}:{:02}", local->tm_hour, local->tm_min);
    if (!withDay) return clock;
    return fmt::format("{} {} {}", kMonths.at(static_cast<std::size_t>(local->tm_mon)),
                       local->tm_mday, clock);
}

std::string observerPosition(double latitude, double longitude) {
    return numberText(std::abs(latitude), 4, "°") + (latitude >= 0 ? "N " : "S ") +
           numberText(std::abs(longitude), 4, "°") + (longitude >= 0 ? "E" : "W");
}

std::string endpointText(std::string_view host, std::int64_t port) {
    return fmt::format("{}:{}", host, port);
}

std::string noradText(std::int64_t noradId) {
    return fmt::format("NORAD {}", noradId);
}

std::string upcomingText(std::size_t count) {
    return fmt::format("{} upcoming", count);
}

std::string queuedBadge(std::size_t count) {
    return fmt::format("QUEUED {}", count);
}

std::string conflictMessage(std::string_view incoming, double incomingElevation,
                            std::string_view existing, double existingElevation) {
    return fmt::format(
        "{} (max {}) overlaps with already-queued {} (max {}). Only one pass can auto-track at a "
        "time — choose which to keep.",
        incoming, numberText(whole(incomingElevation), 0, "°"), existing,
        numberText(whole(existingElevation), 0, "°"));
}

std::string versionText(const std::optional<std::string>& version) {
    return "v" + version.value_or("?");
}

}  // namespace veloran
