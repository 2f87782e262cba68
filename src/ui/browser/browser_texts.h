#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "elements/download_outcome.h"

namespace veloran {

// What the browser writes, as pure functions.

std::string elementAgeText(std::string_view age);  ///< "TLE 2h ago"
std::string countInBrackets(std::size_t count);    ///< "(12)"
std::string selectedText(std::size_t count);       ///< "· 3 selected"; empty for none
std::string channelCountText(std::size_t count);   ///< "3tx"; empty for none
/// A subscribed group, and how its download stands.
struct GroupDownload {
    std::string label;
    bool isAwaited = false;
    std::optional<DownloadOutcome> outcome;
};
/// What stands in the browser while there are no elements: what it waits for, or what has failed.
std::string emptyBrowserText(bool isLoading, const std::vector<GroupDownload>& groups);
std::string subscriptionHelp(bool isSubscribed);  ///< what the switch of a group will do

}  // namespace veloran
