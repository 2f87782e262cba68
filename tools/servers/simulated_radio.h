#pragma once

#include <QTcpServer>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/instant.h"
#include "servers/radio_dialect.h"

class QTcpSocket;

namespace veloran {

/// One line of what passed between the radio and its clients.
struct RadioLogLine {
    enum class Kind { received, sent, note };

    Instant at;
    Kind kind = Kind::note;
    RadioDialect::ClientId client = 0;  ///< counted from 1
    std::string text;                   ///< without its line end
};

/// "2026-03-01T12:00:00.123Z #1 < \sat_caps": the time in UTC, the client, ">" for what the radio
/// sent, "<" for what it received, "." for what happened to it.
std::string logText(const RadioLogLine& line);

/// A radio server on the loopback address that behaves like rigctld, with or without SAT_PROTO v1.
/// It lives on the thread that made it, and needs that thread's event loop.
class SimulatedRadio {
  public:
    using Observer = std::function<void(const RadioLogLine&)>;

    /// A client whose line grows beyond this is dropped.
    static constexpr std::size_t kLongestLine = 4096;
    /// The log forgets its oldest lines beyond this.
    static constexpr std::size_t kLongestLog = 500'000;

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
    const std::deque<RadioLogLine>& log() const { return log_; }
    /// Lines received that start with `prefix`, in order.
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
    std::deque<RadioLogLine> log_;
};

}  // namespace veloran
