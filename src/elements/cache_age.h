#pragma once

#include <optional>
#include <string>
#include <vector>

/// What the age of a download means, as functions of what its time stamp file holds (absent: there
/// is no such file). Times are seconds since 1970.
namespace veloran::cache_age {

/// What `oldest` gives when a time stamp cannot be read, seconds.
inline constexpr double kUnknown = 999999.0;

/// Absent for what is no finite number.
std::optional<double> readTimestamp(const std::optional<std::string>& content);
/// Older than the limit, or of unknown age.
bool isStale(const std::optional<std::string>& content, double nowUnix, double maxAgeHours);
/// Seconds since the oldest of the downloads, never below 0.
double oldest(const std::vector<std::optional<std::string>>& contents, double nowUnix);

}  // namespace veloran::cache_age
