#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "elements/cache_age.h"
#include "elements/download_outcome.h"
#include "elements/tle_category.h"
#include "elements/tle_data.h"
#include "platform/machine.h"

namespace veloran {

/// What the user adds to the groups of the element service. A function that is not set adds
/// nothing.
struct UserElements {
    /// Groups behind the built-in ones, asked for anew in each call that needs them. Main thread.
    std::function<std::vector<TLECategory>()> categories;
    /// Sets that join every merge as its last list, tagged kCustomSource. Called on a worker.
    std::function<std::vector<TLEData>()> importedSets;
};

/// What one may hear of a fetch before it is through. Main thread; what is not set is not called.
struct FetchWatch {
    /// What the caches hold, fresh or not, merged with the imported sets; told when a group has to
    /// be downloaded, once, and never behind the completion.
    std::function<void(std::vector<TLEData>)> cached;
    /// A group's cache has been looked into. `isAwaited`: it is not fresh, and being downloaded.
    /// `remembered` is what the cache tells of its own download.
    std::function<void(const std::string& key, bool isAwaited,
                       const std::optional<DownloadOutcome>& remembered)>
        looked;
    std::function<void(const std::string& key, const DownloadOutcome& outcome)> downloaded;
};

/// The download groups, their cache on disk, and the road from a set of keys to one merged list.
/// Main thread only; reading, decoding and merging run on the workers. May be destroyed while a
/// fetch is under way: its completion is called all the same.
class TLEManager {
  public:
    using ListCompletion = std::function<void(std::vector<TLEData>)>;
    using OptionalListCompletion = std::function<void(std::optional<std::vector<TLEData>>)>;

    static constexpr double kMaxAgeHours = 24;
    /// What oldestCacheAge gives when a group has no readable time stamp, seconds.
    static constexpr double kUnknownAge = cache_age::kUnknown;

    /// `serviceBase` is scheme and host of the element service, without a slash at its end.
    TLEManager(const Machine& machine, std::string serviceBase, UserElements userElements = {});

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
    /// Reads and decodes on the calling thread: an answer of the service takes milliseconds.
    std::optional<std::vector<TLEData>> loadCached(std::string_view key) const;
    /// Downloads, caches and decodes one group; falls back to its cache, then to nothing. A key
    /// that no group has, or a group whose address is none (isWebAddress), gives nothing, whatever
    /// its cache holds.
    /// `completion` is called once, later, on the main thread, here and in all that follow.
    void fetchCategory(const std::string& key, OptionalListCompletion completion) const;
    /// Fresh caches in the order of their keys, then downloads in the order they come in, then the
    /// imported sets, merged. A fresh group causes no request.
    void fetchCategories(const std::vector<std::string>& keys, ListCompletion completion,
                         FetchWatch watch = {}) const;
    /// Downloads one set, with no group and no cache.
    void fetchByNoradId(std::int64_t noradId,
                        std::function<void(std::optional<TLEData>)> completion) const;
    /// Seconds since the oldest download among the keys; 0 without keys.
    double oldestCacheAge(const std::vector<std::string>& keys) const;
    /// Makes the group stale, so that the next fetch downloads it.
    void forgetTimestamp(std::string_view key) const;

  private:
    std::filesystem::path cacheDirectory() const;

    Machine machine_;
    std::string serviceBase_;
    UserElements userElements_;
};

}  // namespace veloran
