#include "platform/http_client.h"

#include <algorithm>
#include <string>

#include "base/text.h"

namespace veloran {

namespace {

/// Takes off `rest` what stands before the first of `marks`, which stays.
std::string_view takeUntil(std::string_view& rest, std::string_view marks) {
    const auto piece = rest.substr(0, rest.find_first_of(marks));
    rest.remove_prefix(piece.size());
    return piece;
}

bool isVisible(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte > 0x20 && byte != 0x7F;
}

bool isPort(std::string_view digits) {
    const bool isNumber =
        std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
    return isNumber && (digits.empty() || parseInt64(digits).value_or(65536) <= 65535);
}

/// "host", "host:port" or the same with the brackets of IPv6.
bool namesHost(std::string_view authority) {
    if (authority.starts_with('[')) {
        const auto address = takeUntil(authority, "]");
        if (address.size() < 2 || authority.empty()) return false;
        authority.remove_prefix(1);
    } else if (takeUntil(authority, ":").empty()) {
        return false;
    }
    return authority.empty() || (authority.front() == ':' && isPort(authority.substr(1)));
}

}  // namespace

// scheme "://" [ user "@" ] host [ ":" port ] and anything behind "/", "?" or "#" (RFC 3986, 3)
bool isWebAddress(std::string_view text) {
    if (!std::all_of(text.begin(), text.end(), isVisible)) return false;
    const std::string scheme = lowerCased(takeUntil(text, ":"));
    if ((scheme != "http" && scheme != "https") || !text.starts_with("://")) return false;
    text.remove_prefix(3);
    std::string_view authority = takeUntil(text, "/?#");
    if (const auto at = authority.rfind('@'); at != std::string_view::npos) {
        authority.remove_prefix(at + 1);
    }
    return namesHost(authority);
}

}  // namespace veloran
