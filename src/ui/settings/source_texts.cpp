#include "ui/settings/source_texts.h"

#include "core/status_texts.h"

namespace veloran {

std::string sourceDetail(const Downloads& downloads, const std::string& key, Instant now) {
    if (downloads.awaited.contains(key)) return "asking…";
    const auto known = downloads.outcomes.find(key);
    return known == downloads.outcomes.end() ? "" : outcomeText(known->second, now);
}

}  // namespace veloran
