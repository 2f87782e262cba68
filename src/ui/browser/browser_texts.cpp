#include "ui/browser/browser_texts.h"

#include <fmt/format.h>

#include <algorithm>

namespace veloran {

std::string elementAgeText(std::string_view age) {
    return fmt::format("TLE {}", age);
}

std::string countInBrackets(std::size_t count) {
    return fmt::format("({})", count);
}

std::string selectedText(std::size_t count) {
    return count > 0 ? fmt::format("· {} selected", count) : "";
}

std::string channelCountText(std::size_t count) {
    return count > 0 ? fmt::format("{}tx", count) : "";
}

namespace {

/// The first few, and how many more there are.
std::string listed(const std::vector<std::string>& items, std::string_view separator) {
    constexpr std::size_t kMost = 6;
    const std::size_t shown = std::min(items.size(), kMost);
    std::string text =
        fmt::format("{}", fmt::join(items.begin(), items.begin() + shown, separator));
    if (items.size() > shown) text += fmt::format("{}{} more", separator, items.size() - shown);
    return text;
}

}  // namespace

std::string emptyBrowserText(bool isLoading, const std::vector<GroupDownload>& groups) {
    if (groups.empty()) {
        return "No group is subscribed. Switch one on in the settings under \"TLE Sources\", or "
               "import elements.";
    }
    std::vector<std::string> awaited;
    std::vector<std::string> failed;
    for (const auto& group : groups) {
        if (group.isAwaited) {
            awaited.push_back(group.label);
        } else if (group.outcome && !group.outcome->hasElements()) {
            failed.push_back(fmt::format("{}: {}", group.label, outcomeWords(*group.outcome)));
        }
    }
    const std::string failures = listed(failed, "\n");
    if (isLoading) {
        const std::string waits = awaited.empty() ? "Reading the elements…"
                                                  : "Waiting for " + listed(awaited, ", ") + "…";
        return failed.empty() ? waits : waits + "\n" + failures;
    }
    if (failed.empty()) return "No group has any elements.";
    return "No elements could be had.\n" + failures +
           "\nCheck the network, then press \"Refresh\".";
}

std::string subscriptionHelp(bool isSubscribed) {
    return isSubscribed ? "Unsubscribe (stop downloading)" : "Subscribe (download TLEs)";
}

}  // namespace veloran
