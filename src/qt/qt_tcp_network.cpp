#include "qt/qt_tcp_network.h"

#include "qt/qt_tcp_connection.h"

namespace veloran {

std::shared_ptr<TcpConnection> QtTcpNetwork::makeConnection(const std::string& host,
                                                            std::uint16_t port) {
    return std::make_shared<QtTcpConnection>(loop_, host, port);
}

}  // namespace veloran
