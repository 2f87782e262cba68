#pragma once

#include <memory>

#include "platform/http_client.h"
#include "platform/main_loop.h"

namespace veloran {

/// Downloads over http and https; any other scheme counts as no URL.
///
/// An answer that is cut short fails if that can be told: its length was announced, or it came
/// packed with gzip, which is asked for and which ends in a checksum. (Qt alone takes what was cut
/// for whole, unless its length was announced with a good status.)
///
/// Ending the client drops the completions that are still to come.
class QtHttpClient final : public HttpClient {
  public:
    /// How long a server may say nothing before the transfer counts as failed: what desktops
    /// commonly allow, long enough for a sleepy server and short enough for a waiting user.
    static constexpr double kIdleSeconds = 60;

    /// `loop` has to outlive the client.
    explicit QtHttpClient(MainLoop& loop, double idleSeconds = kIdleSeconds);
    ~QtHttpClient() override;

    void get(const std::string& url, Completion completion) override;

  private:
    class Transfers;
    std::unique_ptr<Transfers> transfers_;
};

}  // namespace veloran
