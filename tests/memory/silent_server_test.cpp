// What a radio server that answers nothing makes the program hold. Unanswered commands are kept
// without a limit, for an answer belongs to the oldest of them; they go with the connection.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "base/text.h"
#include "core/app_state.h"
#include "counted_memory.h"
#include "support/core_world.h"

namespace veloran::test {
namespace {

constexpr double kHour = 3600;
constexpr double kHz = 10;
constexpr double kSmallestEntry = 32;  // bytes: a std::function
constexpr double kLargestEntry = 80;

/// A connection to a server that reads everything, answers what it is told to, and forgets.
class SilentConnection final : public TcpConnection {
  public:
    SilentConnection(MainLoop& loop, bool arms) : loop_(loop), arms_(arms) {}

    void setStateHandler(std::function<void(TcpState)> handler) override {
        handler_ = std::move(handler);
    }
    void start() override { report(TcpState::ready); }
    void send(std::string bytes, std::function<void(bool ok)> completion) override {
        completion_ = std::move(completion);
        if (!arms_) return;
        if (bytes == "\\sat_caps\n") return answer("SAT_PROTO=1\nRPRT 0\n");
        if (bytes.starts_with("\\sat_aos")) answer("RPRT 0\n");
    }
    void receive(std::size_t /*minimum*/, std::size_t /*maximum*/,
                 std::function<void(TcpReceived)> completion) override {
        receive_ = std::move(completion);
    }
    void cancel() override { report(TcpState::cancelled); }
    void report(TcpState state) {
        loop_.post([handler = handler_, state] { handler(state); });
    }

  private:
    void answer(std::string text) {
        loop_.post([receive = receive_, text = std::move(text)] { receive({.data = text}); });
    }

    MainLoop& loop_;
    const bool arms_;
    std::function<void(TcpState)> handler_;
    std::function<void(TcpReceived)> receive_;
    std::function<void(bool)> completion_;
};

class SilentNetwork final : public TcpNetwork {
  public:
    SilentNetwork(MainLoop& loop, bool arms) : loop_(loop), arms_(arms) {}
    std::shared_ptr<TcpConnection> makeConnection(const std::string& /*host*/,
                                                  std::uint16_t /*port*/) override {
        newest = std::make_shared<SilentConnection>(loop_, arms_);
        return newest;
    }
    std::shared_ptr<SilentConnection> newest;

  private:
    MainLoop& loop_;
    bool arms_;
};

/// A session on a body with both channels.
struct SilentSession {
    explicit SilentSession(bool arms) : network(machine.loop, arms) {
        app =
            AppState::create(Machine{machine.loop, machine.loop, machine.workers, machine.settings,
                                     machine.files, machine.http, network, machine.location});
        app->dopplerUpdateHz = kHz;
        app->setTickAngles([](const Satellite&, Instant at) {
            const double rate =
                5 * (at.secondsSinceReference / 600 - static_cast<double>(static_cast<std::int64_t>(
                                                          at.secondsSinceReference / 600)));
            return AppState::TickAngles{{180, 45, 1000, rate},
                                        TopocentricResult{180, 45, 1000, rate + 0.004}};
        });
        app->startTracking(std::make_shared<Satellite>("SILENT", 1), channel(435e6));
        app->selectedUplinkTransmitter = channel(145e6, "up");
        machine.loop.advance(kHour);
    }
    std::size_t pending() const { return app->rigClient()->pendingResponses(); }

    SimulatedMachine machine;
    SilentNetwork network;
    std::shared_ptr<AppState> app;
};

/// A day; VELORAN_HOURS=168 plays a whole week. Growth shows from the second hour on.
int hoursToPlay() {
    const char* text = std::getenv("VELORAN_HOURS");
    const auto hours = text ? parseInt64(text).value_or(24) : 24;
    return static_cast<int>(std::clamp<std::int64_t>(hours, 2, 100'000));
}

double megabytes(double bytes) {
    return bytes / 1e6;
}

TEST(SilentServer, MemoryOfUnansweredUpdatesGrowsEvenlyAndEndsWithTheConnection) {
    const auto before = liveBytes;
    {
        SilentSession session(true);
        ASSERT_TRUE(session.app->rigClient()->satModeArmed());
        constexpr double kPerHour = 2 * kHz * kHour;
        EXPECT_NEAR(static_cast<double>(session.pending()), kPerHour, 4);
        const auto afterAnHour = liveBytes;
        const auto pendingAfterAnHour = session.pending();
        const int hours = hoursToPlay();
        for (int hour = 1; hour < hours; ++hour) {
            const auto atItsStart = liveBytes;
            session.machine.loop.advance(kHour);
            const auto grown = static_cast<double>(liveBytes - atItsStart);
            EXPECT_GT(grown, kSmallestEntry * kPerHour);
            // The queue's index doubles now and then: a byte, at most, for each entry that waits.
            const auto index = static_cast<double>(session.pending());
            EXPECT_LT(grown, kLargestEntry * kPerHour + index);
        }

        const auto held = liveBytes - afterAnHour;
        const auto entries = static_cast<double>(session.pending() - pendingAfterAnHour);
        const double perHour = static_cast<double>(held) / (hours - 1);
        EXPECT_NEAR(entries, kPerHour * (hours - 1), 4);
        const double perEntry = static_cast<double>(held) / entries;
        EXPECT_GT(perEntry, kSmallestEntry);
        EXPECT_LT(perEntry, kLargestEntry);

        const auto full = liveBytes;
        peakBytes = full;
        session.network.newest->report(TcpState::failed);
        session.machine.loop.runPosted();
        EXPECT_EQ(session.pending(), 0u);
        EXPECT_LT(peakBytes - full, 1'000'000);
        const auto left = liveBytes - before;
        EXPECT_LT(left, 1'000'000);
        fmt::print(
            "{} unanswered updates in {} hours: {:.1f} bytes each, {:.2f} MB an hour, {:.0f} MB in "
            "all; {:.0f} MB more while they are let go, {:.3f} MB behind it\n",
            static_cast<std::size_t>(entries) + pendingAfterAnHour, hours, perEntry,
            megabytes(perHour), megabytes(static_cast<double>(full - before)),
            megabytes(static_cast<double>(peakBytes - full)), megabytes(static_cast<double>(left)));
    }
}

TEST(SilentServer, OneThatNeverAnsweredTheProbeCostsOneEntry) {
    SilentSession session(false);
    EXPECT_EQ(session.app->rigProtocolMode.get(), RigProtocolMode::classic);
    EXPECT_EQ(session.pending(), 1u);
    const auto afterAnHour = liveBytes;
    for (int hour = 1; hour < 24; ++hour) session.machine.loop.advance(kHour);
    EXPECT_EQ(session.pending(), 1u);
    EXPECT_LT(liveBytes - afterAnHour, 10'000);
}

}  // namespace
}  // namespace veloran::test
