#pragma once

#include <QFile>
#include <string>

#include "servers/http_server.h"
#include "servers/simulated_radio.h"

namespace veloran {

/// What the demo has in place of the network and the radio.
class LocalStation {
  public:
    /// `logFile` empty: no log.
    explicit LocalStation(const QString& logFile);

    /// Starts both servers with the elements of `day`; a text that says why it could not be done.
    [[nodiscard]] std::string start(Instant day);

    const HttpServer& elements() const { return elements_; }
    const SimulatedRadio& radio() const { return radio_; }

  private:
    QFile log_;
    HttpServer elements_;
    SimulatedRadio radio_;
};

}  // namespace veloran
