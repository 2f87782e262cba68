#include "scenarios/real_station.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTcpServer>
#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>

#include "sample_catalogue/sample_catalogue.h"
#include "support/processor_time.h"

namespace veloran::test {

double steadySeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

bool spinUntil(const std::function<bool()>& condition, double seconds) {
    QTimer wake;  // so that the condition is looked at when nothing else happens
    wake.start(5);
    const double deadline = steadySeconds() + seconds;
    while (!condition()) {
        if (steadySeconds() > deadline) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

std::uint16_t freePort() {
    QTcpServer server;
    EXPECT_TRUE(server.listen(QHostAddress::LocalHost, 0));
    return server.serverPort();
}

TemporaryMachine::TemporaryMachine(double httpIdleSeconds)
    : desktop_(home_.path().toStdString(), home_.filePath("settings.json").toStdString(),
               {.idleSeconds = httpIdleSeconds}) {}

std::string SampleServices::elementTarget(const std::string& group) {
    return "/NORAD/elements/gp.php?GROUP=" + group + "&FORMAT=json";
}

std::string SampleServices::transmitterTarget(std::int64_t noradId) {
    return "/api/transmitters/?format=json&satellite__norad_cat_id=" + std::to_string(noradId);
}

SampleServices::SampleServices() {
    std::ifstream file(VELORAN_SAMPLE_SATELLITES, std::ios::binary);
    const std::string csv{std::istreambuf_iterator<char>(file), {}};
    const auto satellites = readSampleCatalogue(csv);
    EXPECT_TRUE(satellites && server_.start());
    if (!satellites) return;
    for (const char* group : {"amateur", "stations", "weather"}) {
        server_.serve(elementTarget(group),
                      {.body = ommArray(*satellites, group, startOfDay(SystemClock().now()))});
    }
    server_.serve("/api/transmitters/", {.body = "[]"});
}

Station::Station(double httpIdleSeconds)
    : machine_(httpIdleSeconds),
      state_(
          AppState::create(machine_.machine(), {.elementServiceBase = services_.server().base(),
                                                .transmitterServiceBase = services_.server().base(),
                                                .presetHosts = {},
                                                .transmitterFile = {}})) {}

void Station::load() {
    state_->subscribedCategories = std::set<std::string>{"amateur"};
    state_->loadData();
    ASSERT_TRUE(spinUntil([&] { return !state_->isLoadingTLEs.get(); }));
    ASSERT_GT(state_->satellites->size(), 10u);
}

void Station::track(std::uint16_t radioPort, double hz) {
    constexpr std::int64_t kRs44 = 44909;
    state_->rigHost = std::string("127.0.0.1");
    state_->rigPort = std::int64_t{radioPort};
    state_->dopplerUpdateHz = hz;
    const auto& satellites = state_->satellites.get();
    const auto found = std::ranges::find(satellites, kRs44, &Satellite::id);
    ASSERT_NE(found, satellites.end());
    const auto channels = (*found)->downlinkTransmitters();
    const auto transponder = std::ranges::find(channels, true, &Transmitter::inverting);
    ASSERT_NE(transponder, channels.end());
    moveUnder(**found);
    state_->startTracking(*found, *transponder);
    ASSERT_TRUE(state_->selectedUplinkTransmitter.get());
}

void Station::moveUnder(const Satellite& satellite) {
    double best = -90;
    const Instant now = state_->now();
    for (int latitude = -80; latitude <= 80; latitude += 5) {
        for (int longitude = -180; longitude < 180; longitude += 5) {
            const auto seen = satellite.observe(now, latitude, longitude, 0);
            if (!seen || seen->elevation <= best) continue;
            best = seen->elevation;
            state_->obsLatitude = double{1.0 * latitude};
            state_->obsLongitude = double{1.0 * longitude};
        }
    }
}

TickHistory::TickHistory(const std::shared_ptr<AppState>& state)
    : state_(state), values_{state->currentCorrectedFreq.get()} {
    subscription_ = state->objectWillChange.subscribe([this] { sample(); });
}

std::size_t TickHistory::ticks() const {
    sample();
    return values_.size();
}

std::int64_t TickHistory::tuned(std::size_t tick) const {
    return static_cast<std::int64_t>(values_.at(tick));
}

/// A notification comes before its assignment, so each value is seen by the next one at the latest.
void TickHistory::sample() const {
    const double present = state_->currentCorrectedFreq.get();
    if (values_.back() != present) values_.push_back(present);
}

double LoopWatch::ownSeconds() {
    return steadySeconds() - threadQueuedSeconds();
}

LoopWatch::LoopWatch() : last_(ownSeconds()) {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.callOnTimeout([this] {
        const double now = ownSeconds();
        longest_ = std::max(longest_, now - last_);
        last_ = now;
        ++beats_;
    });
    timer_.start(5);
}

}  // namespace veloran::test
