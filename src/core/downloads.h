#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>

#include "elements/download_outcome.h"

namespace veloran {

/// What is known of the downloads of groups, by key.
struct Downloads {
    std::map<std::string, DownloadOutcome> outcomes;  ///< of the last one, as far as it is known
    std::set<std::string> awaited;                    ///< under way

    /// A group's cache has been looked into. What it remembers counts until this run of the program
    /// knows better: the cache does not tell of downloads that brought nothing.
    void noteCache(const std::string& key, bool isAwaited,
                   const std::optional<DownloadOutcome>& remembered);
    void noteDownload(const std::string& key, const DownloadOutcome& outcome);

    bool operator==(const Downloads&) const = default;
};

}  // namespace veloran
