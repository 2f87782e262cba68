#include "elements/element_merge.h"

#include <cstddef>
#include <unordered_map>

#include "base/text.h"

namespace veloran {

namespace {

/// Epochs this close are one set with two histories of rounding.
constexpr double kTieSeconds = 60;

std::string joined(const std::set<std::string>& keys) {
    std::string text;
    for (const auto& key : keys) {
        if (!text.empty()) text += ',';
        text += key;
    }
    return text;
}

}  // namespace

bool isFresherOrPreferred(const TLEData& candidate, const TLEData& incumbent) {
    const auto candidateEpoch = candidate.epochDate();
    const auto incumbentEpoch = incumbent.epochDate();
    if (!candidateEpoch || !incumbentEpoch) return false;
    const double delta = *candidateEpoch - *incumbentEpoch;
    if (delta > kTieSeconds) return true;
    if (delta < -kTieSeconds) return false;
    return candidate.source == kCustomSource && incumbent.source != kCustomSource;
}

std::vector<TLEData> mergeElements(const std::vector<std::vector<TLEData>>& lists) {
    struct Entry {
        const TLEData* best = nullptr;
        std::set<std::string> sources;
    };
    std::vector<Entry> entries;
    std::unordered_map<std::int64_t, std::size_t> entryOfNumber;
    for (const auto& list : lists) {
        for (const auto& set : list) {
            const auto [found, isNew] = entryOfNumber.try_emplace(set.noradId, entries.size());
            if (isNew) entries.push_back({&set, {}});
            Entry& entry = entries[found->second];
            if (!set.source.empty()) entry.sources.insert(set.source);
            if (isFresherOrPreferred(set, *entry.best)) entry.best = &set;
        }
    }
    std::vector<TLEData> merged;
    merged.reserve(entries.size());
    for (const auto& entry : entries) {
        merged.push_back(*entry.best);
        if (!entry.sources.empty()) merged.back().source = joined(entry.sources);
    }
    return merged;
}

std::set<std::string> splitSources(std::string_view source) {
    std::set<std::string> keys;
    for (const auto key : split(source, ',')) {
        if (!key.empty()) keys.emplace(key);
    }
    return keys;
}

}  // namespace veloran
