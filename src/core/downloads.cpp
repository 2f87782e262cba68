#include "core/downloads.h"

namespace veloran {

void Downloads::noteCache(const std::string& key, bool isAwaited,
                          const std::optional<DownloadOutcome>& remembered) {
    if (isAwaited) awaited.insert(key);
    if (remembered) outcomes.try_emplace(key, *remembered);
}

void Downloads::noteDownload(const std::string& key, const DownloadOutcome& outcome) {
    awaited.erase(key);
    outcomes.insert_or_assign(key, outcome);
}

}  // namespace veloran
