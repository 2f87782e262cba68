// Tracking against Hamlib's own radio server.

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTcpSocket>
#include <algorithm>
#include <array>
#include <csignal>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "scenarios/real_station.h"
#include "ui/main_window.h"

namespace veloran {
namespace {

using test::LoopWatch;
using test::spinUntil;
using test::Station;
using test::steadySeconds;
using test::TickHistory;

/// Hamlib's rigctld with its dummy radio, as a process of its own. Qt starts a process in the
/// memory of this one, which leaves the thread sanitizer blind to all that this thread does later.
class Rigctld {
  public:
    explicit Rigctld(std::uint16_t port) : port_(std::to_string(port)) {}
    ~Rigctld() { kill(); }

    void start() {
        std::array<std::string, 7> words{"rigctld", "-m", "1", "-T", "127.0.0.1", "-t", port_};
        std::array<char*, 8> arguments{};
        std::ranges::transform(words, arguments.begin(), [](auto& word) { return word.data(); });
        const int error =
            posix_spawnp(&process_, "rigctld", nullptr, nullptr, arguments.data(), environ);
        if (error != 0) process_ = 0;
        ASSERT_EQ(error, 0) << "rigctld is missing";
    }
    void kill() {
        if (process_ == 0) return;
        ::kill(process_, SIGKILL);
        waitpid(std::exchange(process_, 0), nullptr, 0);
    }

  private:
    std::string port_;
    pid_t process_ = 0;
};

/// A second client of the server, which reads the frequency that the radio has.
class FrequencyReader {
  public:
    /// Connects, as often as it takes until the server is up.
    bool connect(std::uint16_t port) {
        return spinUntil([&] {
            if (socket_.state() == QAbstractSocket::UnconnectedState) {
                socket_.connectToHost("127.0.0.1", port);
            }
            return socket_.state() == QAbstractSocket::ConnectedState;
        });
    }
    std::optional<std::int64_t> read() {
        socket_.write("f\n");
        if (!spinUntil([&] { return socket_.canReadLine(); })) return {};
        return parseInt64(trimmed(socket_.readLine().toStdString(), Blanks::withNewlines));
    }

  private:
    QTcpSocket socket_;
};

/// One reading, and the values computed from the tick before the question to the answer.
struct Reading {
    std::int64_t had = 0;
    std::vector<std::int64_t> computed;

    bool fits() const { return std::ranges::find(computed, had) != computed.end(); }
};

std::optional<Reading> readAfterNextTick(FrequencyReader& reader, const TickHistory& history) {
    const std::size_t before = history.ticks();
    if (!spinUntil([&] { return history.ticks() > before; })) return {};
    // The question may overtake the command of the tick that has just ended.
    const std::size_t from = history.ticks() - 2;
    const auto had = reader.read();
    if (!had) return {};
    Reading reading{.had = *had, .computed = {}};
    for (std::size_t tick = from; tick < history.ticks(); ++tick) {
        reading.computed.push_back(history.tuned(tick));
    }
    return reading;
}

void print(const std::vector<Reading>& readings) {
    fmt::print("{:>4}  {:>12}  {:>12}\n", "read", "computed Hz", "had Hz");
    for (std::size_t i = 0; i < readings.size(); ++i) {
        fmt::print("{:4}  {:12}  {:12}{}\n", i + 1, readings[i].computed.back(), readings[i].had,
                   readings[i].fits() ? "" : "  <- never computed around then");
    }
}

class RigctldStory : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(server.start());
        ASSERT_NO_FATAL_FAILURE(station.load());
        ASSERT_TRUE(reader.connect(port));
    }
    AppState& state() { return *station.state(); }
    /// Waits until the radio stands on the frequency of the newest tick.
    bool radioFollows(FrequencyReader& client, const TickHistory& history) {
        if (!spinUntil([&] { return history.ticks() > 2; })) return false;
        return spinUntil([&] {
            const auto had = client.read();
            return had && (had == history.newest() || had == history.tuned(history.ticks() - 2));
        });
    }

    const std::uint16_t port = test::freePort();
    Rigctld server{port};
    Station station;
    FrequencyReader reader;
};

TEST_F(RigctldStory, RadioFollowsTheCorrectedDownlinkTruncatedToTheHertz) {
    ASSERT_NO_FATAL_FAILURE(station.track(port));
    const TickHistory history(station.state());
    ASSERT_TRUE(
        spinUntil([&] { return state().rigProtocolMode.get() == RigProtocolMode::classic; }));
    ASSERT_TRUE(radioFollows(reader, history));

    std::vector<Reading> readings;
    while (readings.size() < 30) {
        const auto reading = readAfterNextTick(reader, history);
        ASSERT_TRUE(reading);
        readings.push_back(*reading);
    }
    print(readings);
    for (const auto& reading : readings) EXPECT_TRUE(reading.fits()) << reading.had;

    state().stopTracking();
    EXPECT_TRUE(spinUntil([&] { return reader.read() == history.newest(); }))
        << "the radio stays on the last tick's frequency";
}

TEST_F(RigctldStory, KilledServerThatComesBackIsTrackedAgain) {
    ASSERT_NO_FATAL_FAILURE(station.track(port));
    const TickHistory history(station.state());
    ASSERT_TRUE(radioFollows(reader, history));

    MainWindow window(station.state());
    window.show();
    ASSERT_TRUE(spinUntil([&] { return !state().isLoadingTLEs.get(); }));
    const LoopWatch watch;
    server.kill();
    ASSERT_TRUE(spinUntil([&] { return !state().rigConnected.get(); }));
    EXPECT_TRUE(state().isTracking.get());
    const std::size_t atLoss = history.ticks();
    ASSERT_TRUE(spinUntil([&] { return history.ticks() > atLoss + 5; })) << "figures go on";

    ASSERT_NO_FATAL_FAILURE(server.start());
    FrequencyReader again;
    ASSERT_TRUE(again.connect(port));
    const double back = steadySeconds();
    ASSERT_TRUE(radioFollows(again, history));
    const double took = steadySeconds() - back;
    fmt::print(
        "tracked again {:.2f} s after the server was back; longest gap of the loop {:.0f} ms\n",
        took, 1000 * watch.longestGapSeconds());
    EXPECT_TRUE(state().rigConnected.get());
    EXPECT_LT(watch.longestGapSeconds(), 0.5);
}

}  // namespace
}  // namespace veloran
