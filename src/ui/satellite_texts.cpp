#include "ui/satellite_texts.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "base/text.h"

namespace veloran {

namespace {

constexpr std::string_view kUserPrefix = "user:";

std::string sourceName(const std::string& key, const std::vector<UserTLESource>& userSources) {
    if (key == "custom") return "Custom";
    if (key == "celestial") return "Celestial";
    if (!key.starts_with(kUserPrefix)) return key;  // a group of the service shows as its key
    const auto found = std::ranges::find(userSources, key, &UserTLESource::categoryKey);
    if (found != userSources.end()) return found->name;
    return replacedAll(key.substr(kUserPrefix.size()), '_', ' ');
}

}  // namespace

std::string sourceDisplay(const std::set<std::string>& sources,
                          const std::vector<UserTLESource>& userSources) {
    std::vector<std::string> names;
    for (const std::string& key : sources) names.push_back(sourceName(key, userSources));
    return fmt::format("{}", fmt::join(names, " · "));
}

std::string sourcesHelp(const std::set<std::string>& sources) {
    return fmt::format("{}", fmt::join(sources, ", "));
}

std::string passesHelp(std::size_t count) {
    return fmt::format("{} upcoming passes in the prediction window", count);
}

Ink ageColor(double days) {
    if (days < 7) return Ink::green;
    if (days < 14) return Ink::yellow;
    return Ink::red;
}

Ink elementAgeColor(double seconds) {
    constexpr double kDay = 86400;
    if (seconds < kDay) return Ink::green;
    if (seconds < 3 * kDay) return Ink::yellow;
    return Ink::red;
}

}  // namespace veloran
