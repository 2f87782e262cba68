#include "ui/browser/browser_texts.h"

#include <fmt/format.h>

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

std::string subscriptionHelp(bool isSubscribed) {
    return isSubscribed ? "Unsubscribe (stop downloading)" : "Subscribe (download TLEs)";
}

}  // namespace veloran
