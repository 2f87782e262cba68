#pragma once

#include "platform/main_loop.h"
#include "platform/tcp.h"

namespace veloran {

/// TCP connections on Qt's sockets; see QtTcpConnection for what they do beyond the port.
class QtTcpNetwork final : public TcpNetwork {
  public:
    /// `loop` has to outlive the network and its connections.
    explicit QtTcpNetwork(MainLoop& loop) : loop_(loop) {}

    std::shared_ptr<TcpConnection> makeConnection(const std::string& host,
                                                  std::uint16_t port) override;

  private:
    MainLoop& loop_;
};

}  // namespace veloran
