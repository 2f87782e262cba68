#pragma once

#include <boost/json/object.hpp>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/settings_store.h"

namespace veloran {

// The text form of the settings: one JSON object, a member a line, sorted by key. Doubles keep a
// point, so that 10.0 and 10 stay what they are. Members that this program cannot read pass
// through a rewrite unchanged.

using SettingValues = std::map<std::string, SettingValue, std::less<>>;
/// What becomes of each key; absent means removed.
using SettingChanges = std::map<std::string, std::optional<SettingValue>, std::less<>>;

/// Texts (bytes, lists in sum) and lists of numbers (8 bytes each) beyond this read as missing and
/// are not written.
inline constexpr std::size_t kLargestSetting = 1024 * 1024;

/// Absent when the text is no settings file at all: no JSON, or no object.
std::optional<boost::json::object> parseSettings(std::string_view text);
/// The members that a setting can hold; all others read as missing.
SettingValues readableSettings(const boost::json::object& stored);
/// A value that a file cannot hold (no finite number, no UTF-8, too large) takes its key away.
void applyChanges(const SettingChanges& changes, boost::json::object& stored);
std::string settingsText(const boost::json::object& stored);

}  // namespace veloran
