#include "elements/cache_age.h"

#include <algorithm>

#include "base/text.h"

namespace veloran::cache_age {

std::optional<double> readTimestamp(const std::optional<std::string>& content) {
    if (!content) return std::nullopt;
    return parseDouble(trimmed(*content, Blanks::withNewlines));
}

bool isStale(const std::optional<std::string>& content, double nowUnix, double maxAgeHours) {
    const auto timestamp = readTimestamp(content);
    return !timestamp || nowUnix - *timestamp > maxAgeHours * 3600;
}

double oldest(const std::vector<std::optional<std::string>>& contents, double nowUnix) {
    double age = 0;
    for (const auto& content : contents) {
        const auto timestamp = readTimestamp(content);
        if (!timestamp) return kUnknown;
        age = std::max(age, nowUnix - *timestamp);
    }
    return age;
}

}  // namespace veloran::cache_age
