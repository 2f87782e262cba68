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

/// What came of one GET.
struct HttpResult {
    /// Whatever the HTTP status, but for 304, which says that there is nothing to send. Absent too
    /// when the address is no URL, the transfer failed or had no end, or the body grew beyond the
    /// limit.
    std::optional<std::string> body;
    /// HTTP status of the answer, the last one behind redirects; absent when none came whole.
    std::optional<int> status;
};

class HttpClient {
  public:
    /// Called on the main thread, exactly once. Of two transfers that end one after the other,
    /// either may complete first.
    using Completion = std::function<void(HttpResult)>;

    static constexpr std::size_t kLargestBody = 64 * 1024 * 1024;
    /// A transfer has failed when nothing has come for so long: what desktops commonly allow, long
    /// enough for a sleepy server and short enough for a waiting user.
    static constexpr double kIdleSeconds = 60;
    /// And when it has not ended by then, however steadily it drips.
    static constexpr double kWholeSeconds = 180;
    static constexpr int kNotModified = 304;

    virtual ~HttpClient() = default;

    /// One GET, redirects followed. Main thread only; returns at once, never calls back directly.
    virtual void get(const std::string& url, Completion completion) = 0;
};

}  // namespace veloran
