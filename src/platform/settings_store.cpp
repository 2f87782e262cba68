#include "platform/settings_store.h"

#include <cmath>

namespace veloran {

double SettingsStore::number(std::string_view key) const {
    const auto stored = value(key);
    if (!stored) return 0;
    if (const auto* whole = std::get_if<std::int64_t>(&*stored)) {
        return static_cast<double>(*whole);
    }
    const auto* number = std::get_if<double>(&*stored);
    return number && std::isfinite(*number) ? *number : 0;
}

std::int64_t SettingsStore::integer(std::string_view key) const {
    const auto stored = value(key);
    if (!stored) return 0;
    if (const auto* whole = std::get_if<std::int64_t>(&*stored)) return *whole;
    const auto* number = std::get_if<double>(&*stored);
    // 2^53: beyond it a double no longer tells neighbouring integers apart.
    constexpr double kExactLimit = 9007199254740992.0;
    const bool exact = number && std::abs(*number) <= kExactLimit && std::trunc(*number) == *number;
    return exact ? static_cast<std::int64_t>(*number) : 0;
}

bool SettingsStore::flag(std::string_view key) const {
    const auto stored = value(key);
    const auto* flag = stored ? std::get_if<bool>(&*stored) : nullptr;
    return flag && *flag;
}

std::optional<std::string> SettingsStore::text(std::string_view key) const {
    const auto stored = value(key);
    const auto* text = stored ? std::get_if<std::string>(&*stored) : nullptr;
    return text ? std::optional(*text) : std::nullopt;
}

namespace {

/// An empty list has lost its element type on the way through a file: it reads as either.
template <class Wanted, class Other>
std::optional<std::vector<Wanted>> list(const std::optional<SettingValue>& stored) {
    if (!stored) return std::nullopt;
    if (const auto* wanted = std::get_if<std::vector<Wanted>>(&*stored)) return *wanted;
    const auto* other = std::get_if<std::vector<Other>>(&*stored);
    if (other && other->empty()) return std::vector<Wanted>{};
    return std::nullopt;
}

}  // namespace

std::optional<std::vector<std::string>> SettingsStore::texts(std::string_view key) const {
    return list<std::string, std::int64_t>(value(key));
}

std::optional<std::vector<std::int64_t>> SettingsStore::integers(std::string_view key) const {
    return list<std::int64_t, std::string>(value(key));
}

}  // namespace veloran
