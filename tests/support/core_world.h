#pragma once

#include <fmt/format.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/app_state.h"
#include "support/simulated_machine.h"
#include "transmitters/transmitter.h"

namespace veloran::test {

/// An orbit message of a made-up body on a low orbit of 51.6 degrees, as the element service sends
/// it. Its epoch lies a day before the simulated machine starts.
inline std::string ommRecord(const std::string& name, std::int64_t noradId,
                             double meanAnomalyDegrees = 30.0) {
    return fmt::format(
        R"({{"OBJECT_NAME":"{}","OBJECT_ID":"2020-001A","EPOCH":"2026-11-21T00:00:00.000000",)"
        R"("MEAN_MOTION":15.5,"ECCENTRICITY":0.0006,"INCLINATION":51.64,"RA_OF_ASC_NODE":120.0,)"
        R"("ARG_OF_PERICENTER":80.0,"MEAN_ANOMALY":{},"NORAD_CAT_ID":{},"BSTAR":0.0001}})",
        name, meanAnomalyDegrees, noradId);
}

inline std::string ommGroup(std::initializer_list<std::pair<const char*, std::int64_t>> bodies) {
    std::string text = "[";
    for (const auto& [name, id] : bodies) {
        if (text.size() > 1) text += ",";
        text += ommRecord(name, id);
    }
    return text + "]";
}

inline Transmitter channel(double hz, const std::string& direction = "down",
                           const std::string& mode = "FM") {
    Transmitter result;
    result.freq = hz;
    result.mode = mode;
    result.direction = direction;
    return result;
}

/// A whole core on a machine in memory.
struct CoreWorld {
    SimulatedMachine machine;
    std::shared_ptr<AppState> app;

    void start(AppConfig config = {}) {
        app = AppState::create(machine.machine, std::move(config));
    }

    /// Puts a group into the element cache, downloaded `ageSeconds` ago.
    void cacheGroup(const std::string& key, const std::string& body, double ageSeconds = 60) {
        const std::filesystem::path directory = "/home/test/.veloran/tle";
        machine.files.files[directory / (key + ".tle")] = body;
        machine.files.files[directory / (key + ".timestamp")] =
            fmt::format("{}", machine.loop.now().unixSeconds() - ageSeconds);
    }

    void load() {
        app->loadData();
        machine.loop.runPosted();
    }

    SatellitePtr body(std::int64_t id) const {
        for (const auto& satellite : app->satellites.get()) {
            if (satellite->id == id) return satellite;
        }
        return nullptr;
    }

    /// Makes the tick see these range rates, km/s, in place of what propagation gives.
    void setRangeRates(double now, std::optional<double> ahead) {
        AppState::TickAngles angles;
        angles.now = {180, 45, 1000, now};
        if (ahead) angles.ahead = TopocentricResult{180, 45, 1000, *ahead};
        app->setTickAngles([angles](const Satellite&, Instant) { return angles; });
    }

    // ---- The radio server at the other end of the newest connection.

    void serverAccepts() {
        machine.tcp.newest().report(TcpState::ready);
        machine.loop.runPosted();
    }
    void serverSays(const std::string& text) {
        machine.tcp.newest().deliver(text);
        machine.loop.runPosted();
    }
    /// What the client has sent on all connections since the last call.
    std::vector<std::string> takeSent() {
        std::vector<std::string> lines;
        seen_.resize(machine.tcp.connections.size(), 0);
        for (std::size_t i = 0; i < seen_.size(); ++i) {
            const auto& sent = machine.tcp.connections[i]->sent;
            for (; seen_[i] < sent.size(); ++seen_[i]) lines.push_back(sent[seen_[i]]);
        }
        return lines;
    }
    /// A session on the body, with a server that has announced SAT_PROTO and armed it.
    void trackArmed(const SatellitePtr& satellite, const std::optional<Transmitter>& transmitter) {
        app->startTracking(satellite, transmitter);
        machine.loop.runPosted();
        serverAccepts();
        serverSays("SAT_PROTO=1\nRPRT 0\n");
        serverSays("RPRT 0\n");
        takeSent();
    }

  private:
    std::vector<std::size_t> seen_;
};

}  // namespace veloran::test
