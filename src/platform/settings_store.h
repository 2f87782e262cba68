#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace veloran {

using SettingValue = std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>,
                                  std::vector<std::int64_t>>;

/// The per-user key-value store. Main thread only. A write is remembered at once and reaches the
/// disk without the caller waiting; it never fails as far as the caller can see.
class SettingsStore {
  public:
    virtual ~SettingsStore() = default;

    virtual std::optional<SettingValue> value(std::string_view key) const = 0;
    virtual void set(std::string_view key, SettingValue value) = 0;
    virtual void remove(std::string_view key) = 0;
    virtual std::vector<std::string> keys() const = 0;

    // Typed reads. A value of another kind reads as missing; a number that is not finite too.
    double number(std::string_view key) const;         ///< integers count; 0 when missing
    std::int64_t integer(std::string_view key) const;  ///< whole doubles count; 0 when missing
    bool flag(std::string_view key) const;             ///< false when missing
    std::optional<std::string> text(std::string_view key) const;
    std::optional<std::vector<std::string>> texts(std::string_view key) const;
    std::optional<std::vector<std::int64_t>> integers(std::string_view key) const;
    bool contains(std::string_view key) const { return value(key).has_value(); }
};

}  // namespace veloran
