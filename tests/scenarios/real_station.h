#pragma once

#include <QTemporaryDir>
#include <QTimer>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "app/desktop_machine.h"
#include "core/app_state.h"
#include "servers/http_server.h"

namespace veloran::test {

/// Runs the event loop until the condition holds; false when that takes longer than `seconds`.
/// The condition is looked at after every event and at least every few milliseconds.
[[nodiscard]] bool spinUntil(const std::function<bool()>& condition, double seconds = 60);

/// A port of 127.0.0.1 on which nothing listens.
std::uint16_t freePort();

/// The desktop program's machine in a throw-away home.
class TemporaryMachine {
  public:
    explicit TemporaryMachine(double httpIdleSeconds = QtHttpClient::kIdleSeconds);
    const Machine& machine() const { return desktop_.machine; }

  private:
    QTemporaryDir home_;
    DesktopMachine desktop_;
};

/// The element service with today's elements of the sample satellites, by group, and the
/// transmitter service, which knows no satellite until a test says so.
class SampleServices {
  public:
    SampleServices();
    HttpServer& server() { return server_; }

    static std::string elementTarget(const std::string& group);
    static std::string transmitterTarget(std::int64_t noradId);

  private:
    HttpServer server_;
};

/// A whole station on real parts: elements and channels from a real server, a radio to be named, no
/// window.
class Station {
  public:
    explicit Station(double httpIdleSeconds = QtHttpClient::kIdleSeconds);

    /// Downloads the sample satellites and waits for them.
    void load();
    /// Starts tracking RS-44, whose transponder has a downlink and an uplink, `hz` times a second,
    /// from where it stands highest: there its frequency changes fastest.
    void track(std::uint16_t radioPort, double hz = 20);

    std::shared_ptr<AppState> state() const { return state_; }
    const Machine& machine() const { return machine_.machine(); }
    HttpServer& services() { return services_.server(); }

  private:
    void moveUnder(const Satellite& satellite);

    TemporaryMachine machine_;
    SampleServices services_;
    std::shared_ptr<AppState> state_;
};

/// The corrected downlink at each tick since this was made, in whole hertz as a radio gets it.
class TickHistory {
  public:
    explicit TickHistory(const std::shared_ptr<AppState>& state);

    std::size_t ticks() const;
    /// The value of the newest tick, and of one before it, counted back.
    std::int64_t newest() const { return tuned(ticks() - 1); }
    std::int64_t tuned(std::size_t tick) const;

  private:
    void sample() const;

    std::shared_ptr<AppState> state_;
    mutable std::deque<double> values_;  // the last one is the present one
    ChangeNotifier::Subscription subscription_;
};

/// The longest time that the event loop was deaf by its own doing: gaps of a 5 ms timer, without
/// the time that other programs had the processors.
class LoopWatch {
  public:
    LoopWatch();
    double longestGapSeconds() const { return longest_; }
    std::size_t beats() const { return beats_; }

  private:
    static double ownSeconds();

    QTimer timer_;
    double last_;
    double longest_ = 0;
    std::size_t beats_ = 0;
};

double steadySeconds();

}  // namespace veloran::test
