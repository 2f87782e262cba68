#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace veloran {

enum class TcpState {
    setup,
    preparing,
    waiting,  ///< unreachable or refused; the connection itself keeps trying until cancelled
    ready,
    failed,    ///< over, by an error
    cancelled  ///< over, by cancel()
};

/// What one receive brings: bytes (maybe none), whether the peer has closed its side, and whether
/// an error ended it.
struct TcpReceived {
    std::string data;
    bool isComplete = false;
    bool failed = false;
};

/// One TCP connection, not yet started. Main thread only. No call blocks, and every callback comes
/// later from the main loop, never from inside a call.
///
/// When the peer closes, the receive completes with `isComplete` and the state stays `ready` until
/// a send fails: that send completes with an error, and `failed` follows it.
class TcpConnection {
  public:
    virtual ~TcpConnection() = default;

    virtual void setStateHandler(std::function<void(TcpState)> handler) = 0;
    virtual void start() = 0;
    /// Bytes go out in call order, small writes at once. `completion(ok)` is called once.
    virtual void send(std::string bytes, std::function<void(bool ok)> completion) = 0;
    /// Completes once with at least `minimum` and at most `maximum` bytes, or with what is left at
    /// the end. Several receives are served in call order.
    virtual void receive(std::size_t minimum, std::size_t maximum,
                         std::function<void(TcpReceived)> completion) = 0;
    /// Ends the connection; `cancelled` is reported once unless it has already ended.
    virtual void cancel() = 0;
};

class TcpNetwork {
  public:
    virtual ~TcpNetwork() = default;
    virtual std::shared_ptr<TcpConnection> makeConnection(const std::string& host,
                                                          std::uint16_t port) = 0;
};

}  // namespace veloran
