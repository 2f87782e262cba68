#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sample_catalogue/sample_catalogue.h"
#include "servers/http_server.h"
#include "servers/log_file.h"
#include "servers/simulated_radio.h"

namespace veloran {

/// How often the radio was told what, from the start on.
struct RadioUpdates {
    std::size_t downlink = 0;
    std::size_t uplink = 0;
    std::size_t plain = 0;  ///< frequencies alone

    void count(std::string_view command);
};

/// What the demo has in place of the network and the radio: groups of elements, one address of the
/// user's own, the transmitter service, and text to import.
class LocalStation {
  public:
    /// `logFile` empty: no log.
    explicit LocalStation(const QString& logFile);

    /// Starts both servers with the elements of `day`, and so many made-up satellites in the group
    /// of all active ones; a text that says why it could not be done.
    [[nodiscard]] std::string start(Instant day, std::size_t madeUp);

    const HttpServer& web() const { return web_; }
    const SimulatedRadio& radio() const { return radio_; }
    const RadioUpdates& radioUpdates() const { return updates_; }
    std::string ownSourceUrl() const { return web_.base() + "/own/elements.txt"; }
    const std::string& importText() const { return importText_; }
    /// How often the transmitter service was asked.
    std::size_t channelRequests() const;

  private:
    void serveElements(const std::vector<SampleSatellite>& satellites, Instant day);
    bool serveChannels();

    LogFile log_;
    RadioUpdates updates_;
    HttpServer web_;
    std::string importText_;
    SimulatedRadio radio_;
};

}  // namespace veloran
