#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "elements/tle_category.h"
#include "elements/tle_data.h"
#include "platform/machine.h"

namespace veloran {

/// The download groups, their cache on disk, and the road from a set of keys to one merged list.
/// Main thread only; reading, decoding and merging run on the workers.
class TLEManager {
  public:
    using ListCompletion = std::function<void(std::vector<TLEData>)>;
    using OptionalListCompletion = std::function<void(std::optional<std::vector<TLEData>>)>;

    static constexpr double kMaxAgeHours = 24;
    /// What oldestCacheAge gives when a group has no readable time stamp, seconds.
    static constexpr double kUnknownAge = 999999.0;

    /// `serviceBase` is scheme and host of the element service, without a slash at its end.
    TLEManager(const Machine& machine, std::string serviceBase);

    std::vector<TLECategory> builtinCategories() const;
    /// The built-in groups, then the user's own.
    std::vector<TLECategory> categories() const;
    /// OMM JSON where the text is that and gives at least one set, element lines otherwise.
    static std::vector<TLEData> parseAuto(std::string_view text);

    std::string celestrakURL(std::string_view groupWord) const;
    static std::string filenameForCategory(std::string_view key);
    std::filesystem::path cacheFile(std::string_view key) const;
    std::filesystem::path timestampFile(std::string_view key) const;

    bool isCacheStale(std::string_view key, double maxAgeHours = kMaxAgeHours) const;
    std::optional<std::vector<TLEData>> loadCached(std::string_view key) const;
    /// Downloads, caches and decodes one group; falls back to its cache, then to nothing.
    void fetchCategory(const std::string& key, OptionalListCompletion completion);
    /// Fresh caches and downloads of all keys, merged with the imported sets. `completion` is
    /// always called, later, on the main thread.
    void fetchCategories(const std::vector<std::string>& keys, ListCompletion completion);
    void fetchByNoradId(std::int64_t noradId,
                        std::function<void(std::optional<TLEData>)> completion);
    /// Seconds since the oldest download among the keys; 0 without keys.
    double oldestCacheAge(const std::vector<std::string>& keys) const;
    /// Makes the group stale, so that the next fetch downloads it.
    void forgetTimestamp(std::string_view key);

  private:
    Machine machine_;
    std::string serviceBase_;
};

/// The two decisions of the cache, as functions of what the time stamp file holds.
namespace cache_age {
/// Seconds since 1970 in a time stamp file; absent for what is no number.
std::optional<double> readTimestamp(const std::optional<std::string>& content);
bool isStale(const std::optional<std::string>& content, double nowUnix, double maxAgeHours);
double oldest(const std::vector<std::optional<std::string>>& contents, double nowUnix);
}  // namespace cache_age

}  // namespace veloran
