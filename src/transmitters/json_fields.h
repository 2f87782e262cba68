#pragma once

#include <boost/json/object.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veloran {

/// Typed reading of one JSON record. A member of a wrong type spoils the record as a whole, which
/// is asked for once, after all members have been read. Null counts as missing.
class JsonFields {
  public:
    explicit JsonFields(const boost::json::object& object) : object_(object) {}

    std::string requiredText(std::string_view key);
    std::int64_t requiredInteger(std::string_view key);  ///< a whole number within 64 bits
    std::optional<double> number(std::string_view key);  ///< finite
    /// A number that can be truncated to 64 bits, as frequencies are for the radio.
    std::optional<double> hertz(std::string_view key);
    std::optional<std::string> text(std::string_view key);
    std::optional<bool> flag(std::string_view key);
    std::optional<std::int64_t> integer(std::string_view key);  ///< whole, within 64 bits
    bool flagOrFalse(std::string_view key) const;               ///< anything but true is false

    bool isGood() const { return isGood_; }

  private:
    const boost::json::value* find(std::string_view key) const;

    const boost::json::object& object_;
    bool isGood_ = true;
};

}  // namespace veloran
