#pragma once

#include <QTcpServer>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "servers/radio_dialect.h"
#include "servers/radio_log.h"

class QTcpSocket;

namespace veloran {

/// A radio server on the loopback address that behaves like rigctld, with or without SAT_PROTO v1.
/// It lives on the thread that made it, and needs that thread's event loop.
class SimulatedRadio {
  public:
    using Observer = std::function<void(const RadioLogLine&)>;

    /// A client whose line grows beyond this is dropped.
    static constexpr std::size_t kLongestLine = 4096;

    explicit SimulatedRadio(CapsAnswer capsAnswer = CapsAnswer::satProtoV1);
    ~SimulatedRadio();
    SimulatedRadio(const SimulatedRadio&) = delete;
    SimulatedRadio& operator=(const SimulatedRadio&) = delete;

    /// Listens on 127.0.0.1; port 0 picks a free one. False when the port cannot be had.
    [[nodiscard]] bool start(std::uint16_t port = 0);
    /// Stops listening and drops every client; start(port()) takes up the same address again.
    void stop();
    /// Drops every client and goes on listening.
    void closeAll();
    void steal();
    void refuseUplink(bool refuse = true);

    std::uint16_t port() const { return port_; }
    const RadioDialect& radio() const { return radio_; }
    /// The lines received that start with `prefix`, in order, as far back as the log goes.
    std::vector<std::string> received(std::string_view prefix = "") const;

    Observer onLine;  ///< called for each line of the log as it is written

  private:
    void accept();
    void read(QTcpSocket* socket, RadioDialect::ClientId client);
    void note(RadioDialect::ClientId client, std::string text);
    void write(RadioLogLine line);

    QTcpServer server_;
    std::uint16_t port_ = 0;
    RadioDialect radio_;
    RadioDialect::ClientId lastClient_ = 0;
    RadioLog log_;
};

}  // namespace veloran
