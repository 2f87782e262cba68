#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/faults.h"
#include "support/simulated_machine.h"

namespace veloran::test {

class FaultyRadio;

/// A connection that keeps the port's promises the way the real one does: an attempt that fails is
/// `waiting`, told once, and made again every second; the peer's end shows at the next send only.
class FaultyConnection final : public TcpConnection,
                               public std::enable_shared_from_this<FaultyConnection> {
  public:
    explicit FaultyConnection(FaultyRadio& radio) : radio_(radio) {}

    void setStateHandler(std::function<void(TcpState)> handler) override;
    void start() override;
    void send(std::string bytes, std::function<void(bool ok)> completion) override;
    void receive(std::size_t minimum, std::size_t maximum,
                 std::function<void(TcpReceived)> completion) override;
    void cancel() override;

    bool isReady() const { return state_ == TcpState::ready; }
    bool peerClosed() const { return peerClosed_; }

  private:
    friend class FaultyRadio;
    struct Piece {
        double due = 0;
        std::string bytes;
        std::function<void()> delivered;
    };
    struct Unread {
        std::uint64_t number = 0;
        std::string line;
    };
    struct PendingReceive {
        std::size_t minimum = 0;
        std::size_t maximum = 0;
        std::function<void(TcpReceived)> completion;
    };

    bool isOver() const { return state_ == TcpState::failed || state_ == TcpState::cancelled; }
    void enter(TcpState state);
    void end(TcpState state);
    void attempt();
    void close();
    void put(Piece piece);
    void deliverDue();
    void serveReceives();
    void readAll();

    FaultyRadio& radio_;
    std::function<void(TcpState)> handler_;
    TcpState state_ = TcpState::setup;
    TcpState told_ = TcpState::setup;  // what the program knows of it
    std::deque<PendingReceive> receives_;
    std::vector<std::function<void(bool)>> unsent_;  // sends to a server that does not read
    std::deque<Piece> outgoing_;                     // on the way to the program
    std::deque<Unread> unread_;                      // on the way to a server that does not read
    std::size_t backlog_ = 0;
    std::string incoming_;
    bool halfOpen_ = false;
    bool peerClosed_ = false;
};

/// A radio server behind a network, both of which misbehave as told. Keeps books of what each
/// command of the program was answered, so that a test can tell what has to become of it.
class FaultyRadio final : public TcpNetwork {
  public:
    enum class Road { open, refusing, silent };

    FaultyRadio(SimulatedLoop& loop, std::mt19937& random, FaultTally& tally)
        : loop_(loop), random_(random), tally_(tally) {}

    std::shared_ptr<TcpConnection> makeConnection(const std::string& host,
                                                  std::uint16_t port) override;

    // ---- Faults.

    Road road = Road::open;
    bool stalled = false;                ///< accepts, and neither reads nor answers
    std::optional<Fault> replies;        ///< how replies go wrong
    double share = 1;                    ///< of the replies that do
    void reset();                        ///< the connection is gone, as the next send tells
    void loseSilently();                 ///< the server has gone, and nobody tells
    void steal();                        ///< another client claims the radio
    void restart(bool speaksExtension);  ///< a reset, and maybe another dialect behind it
    void heal();                         ///< all is well from now on; nothing is made undone

    // ---- What has to become of it.

    bool satProto = true;
    bool armed = false;
    std::string armedName;
    std::size_t downlinks = 0;  ///< heard so far
    std::size_t uplinks = 0;
    std::size_t frequencies = 0;
    std::size_t misdirected = 0;  ///< lines to what was not connected
    bool everRefusedUplink = false;
    /// Commands of the live connection that still wait for an answer, as the program has to count
    /// them; absent where garbage may have looked like an answer.
    std::optional<std::size_t> owed() const;
    /// Whether answers of the live connection were lost or went to another command than their own,
    /// so that only a new connection puts things right.
    bool isSpoiled() const { return spoiled_; }
    std::shared_ptr<FaultyConnection> live() const { return newest_.lock(); }

  private:
    friend class FaultyConnection;
    struct Entry {
        std::uint64_t number = 0;
        double sentAt = 0;
        bool isProbe = false;
    };
    struct Reply {
        std::string text;
        std::int64_t code = 0;
    };

    void sent(const std::string& line);
    void ended();
    Reply replyTo(const std::string& line);
    Reply replyToExtension(const std::string& line);
    void answer(FaultyConnection& connection, std::uint64_t number, const std::string& line);
    void spoil(const std::string& line);
    void matched(std::uint64_t number, std::int64_t code);
    std::string garbage();
    double uniform(double most) { return std::uniform_real_distribution(0.0, most)(random_); }
    std::size_t pick(std::size_t count) { return random_() % count; }
    bool strikes(Fault fault);

    SimulatedLoop& loop_;
    std::mt19937& random_;
    FaultTally& tally_;
    std::weak_ptr<FaultyConnection> newest_;
    std::deque<Entry> entries_;
    std::uint64_t lines_ = 0;  // heard or lost so far: the number of the next one
    bool stolen_ = false;
    bool spoiled_ = false;
    bool garbled_ = false;
};

}  // namespace veloran::test
