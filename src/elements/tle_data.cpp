#include "elements/tle_data.h"

#include <fmt/format.h>

#include <cmath>

#include "base/calendar.h"

namespace veloran {

namespace {

constexpr double kSecondsPerDay = 86400;

}  // namespace

std::optional<TLEData::EpochParts> TLEData::epochParts() const {
    // 2^63 and beyond is no day of any calendar; NaN fails the comparison too.
    if (!(std::abs(epochDays) < 0x1p63)) return std::nullopt;
    const double day = std::trunc(epochDays);
    const auto midnight = instantFromDate(epochYear, 1, static_cast<std::int64_t>(day));
    if (!midnight) return std::nullopt;
    return EpochParts{*midnight, epochDays - day};
}

std::optional<Instant> TLEData::epochDate() const {
    const auto epoch = epochParts();
    if (!epoch) return std::nullopt;
    return epoch->midnight + epoch->dayFraction * kSecondsPerDay;
}

std::optional<double> TLEData::ageDays(Instant now) const {
    const auto epoch = epochDate();
    if (!epoch) return std::nullopt;
    return (now - *epoch) / kSecondsPerDay;
}

std::string TLEData::ageString(Instant now) const {
    const auto age = ageDays(now);
    if (!age) return "?";
    if (*age < 1) return fmt::format("{:.0f}h", *age * 24);
    if (*age < 10) return fmt::format("{:.1f}d", *age);
    return fmt::format("{:.0f}d", *age);
}

}  // namespace veloran
