#pragma once

#include <memory>
#include <string>

#include "platform/http_client.h"
#include "platform/main_loop.h"

namespace veloran {

struct QtHttpOptions {
    double idleSeconds = HttpClient::kIdleSeconds;
    double wholeSeconds = HttpClient::kWholeSeconds;
    /// Certificates (PEM) of authorities that are trusted beside those of the system.
    std::string authorities{};
};

/// Downloads over http and https; any other scheme counts as no URL, and so does a redirect from
/// https to http. A password in an address is told to its own host alone, when that asks for it.
///
/// An answer that is cut short fails if that can be told: its length was announced, or it came
/// packed with gzip, which is asked for and which ends in a checksum. (Qt alone takes what was cut
/// for whole, unless its length was announced with a good status.) What came packed is unpacked on
/// a worker.
///
/// Ending the client drops the completions that are still to come.
class QtHttpClient final : public HttpClient {
  public:
    /// `loop` has to outlive the client, and the client the tasks of `workers`.
    QtHttpClient(MainLoop& loop, WorkerPool& workers, const QtHttpOptions& options = {});
    ~QtHttpClient() override;

    void get(const std::string& url, Completion completion) override;

  private:
    class Transfers;
    std::unique_ptr<Transfers> transfers_;
};

}  // namespace veloran
