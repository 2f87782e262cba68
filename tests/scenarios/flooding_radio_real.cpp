// A radio server that floods, on a real connection: tracking goes on.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <algorithm>
#include <ctime>
#include <vector>

#include "scenarios/real_station.h"
#include "servers/flooding_radio.h"

namespace veloran::test {
namespace {

struct Case {
    const char* name;
    FloodingRadio::Flood (*flood)();
    std::size_t enough;  // bytes
};

/// How much of the processor the main thread takes from one look for events to the next.
class TurnWatch {
  public:
    TurnWatch() {
        awake_ = QObject::connect(QAbstractEventDispatcher::instance(),
                                  &QAbstractEventDispatcher::awake, [this] {
                                      const double now = processorMilliseconds();
                                      turns_.push_back(now - last_);
                                      last_ = now;
                                  });
    }
    ~TurnWatch() { QObject::disconnect(awake_); }
    TurnWatch(const TurnWatch&) = delete;
    TurnWatch& operator=(const TurnWatch&) = delete;

    void print() {
        std::ranges::sort(turns_);
        const auto at = [this](double share) {
            return turns_.at(
                static_cast<std::size_t>(share * static_cast<double>(turns_.size() - 1)));
        };
        fmt::print(
            "{} turns of the loop, of the processor: median {:.3f}, p99.9 {:.3f}, longest "
            "{:.3f} ms\n",
            turns_.size(), at(0.5), at(0.999), at(1));
    }

  private:
    static double processorMilliseconds() {
        timespec used{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
        return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) * 1e-6;
    }
    QMetaObject::Connection awake_;
    double last_ = processorMilliseconds();
    std::vector<double> turns_;
};

class FloodingRadioStory : public testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, FloodingRadioStory,
    testing::Values(Case{"LineFeeds", FloodingRadio::lineFeeds, 4'000'000},
                    Case{"AnEndlessLine", FloodingRadio::endlessLine, 2 * FloodingRadio::kReply},
                    Case{"AnotherProgramsBytes", FloodingRadio::binary, FloodingRadio::kReply}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_P(FloodingRadioStory, TicksGoOnAndTheSessionEndsAsAlways) {
    FloodingRadio radio(GetParam().flood());
    ASSERT_TRUE(radio.start());
    Station station;
    ASSERT_NO_FATAL_FAILURE(station.load());
    ASSERT_NO_FATAL_FAILURE(station.track(radio.port(), 20));
    ASSERT_TRUE(spinUntil([&] { return station.state()->rigSatProtoArmed.get(); }));

    TurnWatch turns;
    const TickHistory history(station.state());
    ASSERT_TRUE(spinUntil([&] { return radio.bytesSent() > 0; }));
    const auto ticks = history.ticks();
    ASSERT_TRUE(spinUntil(
        [&] { return history.ticks() >= ticks + 20 && radio.bytesSent() >= GetParam().enough; }));
    const auto sent = radio.bytesSent();
    EXPECT_TRUE(spinUntil([&] { return radio.bytesSent() > sent; })) << "the flood goes on";
    turns.print();
    EXPECT_TRUE(station.state()->rigConnected.get());
    station.state()->stopTracking();
    EXPECT_FALSE(station.state()->isTracking.get());
}

}  // namespace
}  // namespace veloran::test
