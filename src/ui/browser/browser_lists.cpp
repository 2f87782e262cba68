#include "ui/browser/browser_lists.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "base/text.h"

namespace veloran {

namespace {

template <class Condition>
std::vector<SatellitePtr> those(const std::vector<SatellitePtr>& satellites, Condition condition) {
    std::vector<SatellitePtr> result;
    std::ranges::copy_if(satellites, std::back_inserter(result), condition);
    return result;
}

std::vector<BrowserSection> emptySections(const std::vector<TLECategory>& categories) {
    std::vector<BrowserSection> sections;
    sections.reserve(categories.size() + 2);
    sections.push_back({std::string(kCelestialKey), "Celestial (Sun / Moon)", {}});
    for (const TLECategory& c : categories) sections.push_back({c.name, c.description, {}});
    sections.push_back({std::string(kCustomKey), "Custom TLEs", {}});
    return sections;
}

}  // namespace

SatelliteSearch::SatelliteSearch(std::vector<SatellitePtr> satellites)
    : satellites_(std::move(satellites)) {
    words_.reserve(satellites_.size());
    for (const SatellitePtr& s : satellites_) {
        words_.push_back({lowerCased(s->name), std::to_string(s->id)});
    }
}

std::vector<SatellitePtr> SatelliteSearch::matches(std::string_view text) const {
    if (text.empty()) return satellites_;
    const std::string wanted = lowerCased(text);
    std::vector<SatellitePtr> found;
    for (std::size_t i = 0; i < satellites_.size(); ++i) {
        const Words& words = words_[i];
        if (words.name.find(wanted) != std::string::npos ||
            words.number.find(text) != std::string::npos) {
            found.push_back(satellites_[i]);
        }
    }
    return found;
}

std::vector<SatellitePtr> sortedByName(std::vector<SatellitePtr> satellites) {
    std::ranges::stable_sort(satellites, {},
                             [](const SatellitePtr& s) -> const std::string& { return s->name; });
    return satellites;
}

std::vector<BrowserSection> orderedCategories(const std::vector<SatellitePtr>& satellites,
                                              const std::vector<TLECategory>& categories) {
    std::vector<BrowserSection> sections = emptySections(categories);
    // Two sources of the user's may share a key; each then shows the same satellites.
    std::unordered_multimap<std::string_view, std::size_t> places;
    for (std::size_t i = 0; i < sections.size(); ++i) places.emplace(sections[i].key, i);
    for (const SatellitePtr& s : satellites) {
        for (const std::string& source : s->sources) {
            const auto [first, last] = places.equal_range(source);
            for (auto place = first; place != last; ++place) {
                sections[place->second].sats.push_back(s);
            }
        }
    }
    std::erase_if(sections, [](const BrowserSection& section) { return section.sats.empty(); });
    return sections;
}

std::vector<SatellitePtr> uncategorizedSats(const std::vector<SatellitePtr>& satellites) {
    return those(satellites, [](const SatellitePtr& s) { return s->sources.empty(); });
}

bool isDownloadGroup(std::string_view sectionKey) {
    return sectionKey != kCelestialKey && sectionKey != kCustomKey &&
           sectionKey != kUncategorizedKey;
}

std::vector<SatellitePtr> withOtherSelection(const std::vector<SatellitePtr>& satellites,
                                             bool selected) {
    return those(satellites,
                 [selected](const SatellitePtr& s) { return s->isSelected.get() != selected; });
}

}  // namespace veloran
