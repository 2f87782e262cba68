#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace veloran {

// What the browser writes, as pure functions.

std::string elementAgeText(std::string_view age);  ///< "TLE 2h ago"
std::string countInBrackets(std::size_t count);    ///< "(12)"
std::string selectedText(std::size_t count);       ///< "· 3 selected"; empty for none
std::string channelCountText(std::size_t count);   ///< "3tx"; empty for none
std::string subscriptionHelp(bool isSubscribed);   ///< what the switch of a group will do

}  // namespace veloran
