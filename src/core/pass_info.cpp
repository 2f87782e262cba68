#include "core/pass_info.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <ctime>
#include <string_view>

#include "base/calendar.h"
#include "base/checked.h"

namespace veloran {

std::string PassInfo::riseTimeUTC() const {
    return utcTimeText(pass.riseTime);
}
std::string PassInfo::peakTimeUTC() const {
    return utcTimeText(pass.peakTime);
}
std::string PassInfo::setTimeUTC() const {
    return utcTimeText(pass.setTime);
}
std::string PassInfo::riseTimeLocal() const {
    return localTimeText(pass.riseTime, true);
}
std::string PassInfo::peakTimeLocal() const {
    return localTimeText(pass.peakTime, true);
}
std::string PassInfo::setTimeLocal() const {
    return localTimeText(pass.setTime, true);
}
std::string PassInfo::durationString() const {
    return durationText(pass.duration);
}
std::string PassInfo::maxElString() const {
    return maxElevationText(pass.maxElevation);
}
std::string PassInfo::directionString() const {
    return directionText(pass.riseAzimuth, pass.setAzimuth);
}

std::string compassDirection(double azimuth) {
    static constexpr std::array<std::string_view, 16> kPoints{"N",  "NNE", "NE", "ENE", "E",  "ESE",
                                                              "SE", "SSE", "S",  "SSW", "SW", "WSW",
                                                              "W",  "WNW", "NW", "NNW"};
    const std::int64_t point = checkedInt64((azimuth + 11.25) / 22.5) % 16;
    return std::string(kPoints.at(static_cast<std::size_t>(point)));
}

std::string directionText(double riseAzimuth, double setAzimuth) {
    return fmt::format("{} → {}", compassDirection(riseAzimuth), compassDirection(setAzimuth));
}

std::string maxElevationText(double degrees) {
    return fmt::format("{:.1f}°", degrees);
}

std::string utcTimeText(Instant t) {
    const CivilTime civil = civilTime(t);
    return fmt::format("{:02}:{:02}:{:02} UTC", civil.hour, civil.minute, civil.second);
}

std::string localTimeText(Instant t, bool withSeconds) {
    // GCC 12 has no time zone database of its own, so the C library converts.
    const std::time_t seconds = checkedInt64(std::floor(t.unixSeconds()));
    std::tm local{};
    if (!localtime_r(&seconds, &local)) stopProgram("time beyond the local calendar");
    if (!withSeconds) return fmt::format("{:02}:{:02}", local.tm_hour, local.tm_min);
    return fmt::format("{:02}:{:02}:{:02}", local.tm_hour, local.tm_min, local.tm_sec);
}

std::string durationText(double seconds) {
    const std::int64_t whole = checkedInt64(seconds);
    return fmt::format("{}m {:02}s", whole / 60, whole % 60);
}

}  // namespace veloran
