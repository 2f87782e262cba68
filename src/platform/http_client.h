#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace veloran {

/// Whether a text is an address that a GET can be tried on: http or https, a host, a port that is a
/// number, and no blanks or control characters anywhere.
bool isWebAddress(std::string_view text);

class HttpClient {
  public:
    /// Called on the main thread, exactly once: the body, whatever the HTTP status, or nothing
    /// when the address is no URL, the transfer failed, or the body grew beyond the limit.
    using Completion = std::function<void(std::optional<std::string> body)>;

    static constexpr std::size_t kLargestBody = 64 * 1024 * 1024;

    virtual ~HttpClient() = default;

    /// One GET, redirects followed. Main thread only; returns at once, never calls back directly.
    virtual void get(const std::string& url, Completion completion) = 0;
};

}  // namespace veloran
