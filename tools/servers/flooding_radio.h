#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

namespace veloran {

/// A radio server gone wrong, on the loopback address and a thread of its own: it speaks SAT_PROTO
/// v1 until it has armed a client, then it floods it. One client at a time.
class FloodingRadio {
  public:
    /// What it sends over and over, and how fast. After each kReply bytes it ends line and reply.
    struct Flood {
        std::string pattern;
        double bytesPerSecond = 0;  ///< 0: as fast as they are taken
    };
    static constexpr std::size_t kReply = 100'000'000;

    static Flood lineFeeds();    ///< 2 MB a second
    static Flood endlessLine();  ///< as fast as it is taken
    static Flood binary();       ///< random bytes, as fast as they are taken

    explicit FloodingRadio(Flood flood) : flood_(std::move(flood)) {}
    ~FloodingRadio();
    FloodingRadio(const FloodingRadio&) = delete;
    FloodingRadio& operator=(const FloodingRadio&) = delete;

    [[nodiscard]] bool start();
    std::uint16_t port() const { return port_; }
    std::size_t bytesSent() const { return sent_; }

  private:
    void serve();
    void serveClient(int client);
    bool answerUntilArmed(int client) const;
    void flood(int client);
    bool sendAll(int client, std::string_view bytes) const;

    const Flood flood_;
    int listener_ = -1;
    std::uint16_t port_ = 0;
    std::atomic<bool> isEnding_ = false;
    std::atomic<std::size_t> sent_ = 0;
    std::thread thread_;
};

}  // namespace veloran
