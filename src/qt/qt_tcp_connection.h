#pragma once

#include <deque>
#include <memory>

#include "platform/main_loop.h"
#include "platform/tcp.h"

class QTcpSocket;

namespace veloran {

/// A connection on a QTcpSocket.
///
/// An attempt that fails for whatever reason is `waiting`, reported once, and is made again every
/// second until it succeeds or is cancelled. What is sent before `ready` goes out then. An end of
/// the connection by the network, a reset too, counts as the peer's close.
///
/// Bytes are taken from the system only as receives ask for them, beyond a small buffer, so that
/// TCP itself slows down a server that floods. A server that leaves kLargestBacklog bytes unread
/// fails the send and with it the connection.
///
/// When it ends, outstanding sends and receives complete with an error, then comes the state. A
/// connection that is destroyed without being cancelled closes, and calls back no more.
class QtTcpConnection final : public TcpConnection,
                              public std::enable_shared_from_this<QtTcpConnection> {
  public:
    static constexpr double kRetrySeconds = 1;
    /// The system looks when it repeats what was not acknowledged: up to half a second later.
    static constexpr int kUnansweredMilliseconds = 4000;
    static constexpr int kIdleSeconds = 10;  // then the system asks whether the peer is there
    static constexpr int kProbeSeconds = 4;
    static constexpr std::size_t kReadBuffer = 16 * 1024;
    static constexpr std::size_t kLargestBacklog = 1024 * 1024;

    QtTcpConnection(MainLoop& loop, std::string host, std::uint16_t port);
    ~QtTcpConnection() override;

    void setStateHandler(std::function<void(TcpState)> handler) override;
    void start() override;
    void send(std::string bytes, std::function<void(bool ok)> completion) override;
    void receive(std::size_t minimum, std::size_t maximum,
                 std::function<void(TcpReceived)> completion) override;
    void cancel() override;

  private:
    struct Send {
        std::size_t unsent = 0;  // bytes that the system has not taken yet
        std::function<void(bool ok)> completion;
    };
    struct Receive {
        std::size_t minimum = 0;
        std::size_t maximum = 0;
        std::function<void(TcpReceived)> completion;
    };

    bool isOver() const { return state_ == TcpState::failed || state_ == TcpState::cancelled; }
    void enter(TcpState state);
    void end(TcpState state);

    void attempt();
    void onConnected();
    void onAttemptFailed();
    void onClosed();
    void closeSocket();

    void write(const std::string& bytes);
    void onWritten(std::size_t count);
    void serveReceives();

    MainLoop& loop_;
    const std::string host_;
    const std::uint16_t port_;
    std::function<void(TcpState)> handler_;
    TcpState state_ = TcpState::setup;
    std::unique_ptr<QTcpSocket> socket_;
    std::uint64_t attempts_ = 0;  // tells events of this socket from those of an earlier one
    std::deque<Send> sends_;
    std::size_t backlog_ = 0;  // sum over sends_
    std::string early_;        // bytes of sends_ that were sent before the connection stood
    std::deque<Receive> receives_;
    std::string incoming_;  // bytes taken from the socket that no receive has had yet
    bool peerClosed_ = false;
};

}  // namespace veloran
