#include "qt/fine_timer.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include "qt/spin.h"

namespace veloran {
namespace {

using namespace std::chrono_literals;
using test::spinFor;
using test::spinUntil;
using Clock = FineTimer::Clock;

/// No file, socket or timer descriptor can be opened for as long as this lives.
class NoDescriptors {
  public:
    NoDescriptors() {
        getrlimit(RLIMIT_NOFILE, &before_);
        const rlimit none{0, before_.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoDescriptors() { setrlimit(RLIMIT_NOFILE, &before_); }
    NoDescriptors(const NoDescriptors&) = delete;
    NoDescriptors& operator=(const NoDescriptors&) = delete;

  private:
    rlimit before_{};
};

/// Both ways of counting: the rules are the same.
class FineTimerRules : public ::testing::TestWithParam<bool> {
  protected:
    FineTimerRules() {
        if (GetParam()) {
            timer = std::make_unique<FineTimer>();
        } else {
            const FineTimer known;  // a sanitizer opens a pipe for its first look at a type
            const NoDescriptors none;
            timer = std::make_unique<FineTimer>();
        }
        QObject::connect(timer.get(), &FineTimer::timeout, timer.get(),
                         [this] { fired.push_back(Clock::now()); });
    }

    std::unique_ptr<FineTimer> timer;
    std::vector<Clock::time_point> fired;
};

INSTANTIATE_TEST_SUITE_P(Ways, FineTimerRules, ::testing::Bool(),
                         [](const auto& way) { return way.param ? "ByDescriptor" : "ByQTimer"; });

void holdUpUntil(Clock::time_point when) {
    while (Clock::now() < when) std::this_thread::yield();
}

TEST_P(FineTimerRules, FiresOnceAndNotBeforeItsMoment) {
    for (const auto wait : {300us, 1700us, 20400us}) {
        fired.clear();
        const auto due = Clock::now() + wait;
        timer->startUntil(due);
        ASSERT_TRUE(spinUntil([this] { return !fired.empty(); }));
        EXPECT_GE(fired.front(), due);
        spinFor(5);
        EXPECT_EQ(fired.size(), 1U);
    }
}

TEST_P(FineTimerRules, MomentsThatHavePassedAreNow) {
    for (const auto due : {Clock::time_point(), Clock::time_point(-5s), Clock::now() - 1s}) {
        fired.clear();
        timer->startUntil(due);
        EXPECT_TRUE(fired.empty());
        EXPECT_TRUE(spinUntil([this] { return !fired.empty(); }));
    }
}

TEST_P(FineTimerRules, LaterMomentTakesTheEarlierBack) {
    const auto early = Clock::now() + 1ms;
    const auto late = early + 40ms;
    timer->startUntil(early);
    holdUpUntil(early + 1ms);
    timer->startUntil(late);
    ASSERT_TRUE(spinUntil([this] { return !fired.empty(); }));
    EXPECT_GE(fired.front(), late);
    EXPECT_EQ(fired.size(), 1U);
}

TEST_P(FineTimerRules, StoppedTimerIsSilentAndStartsAgain) {
    const auto due = Clock::now() + 1ms;
    timer->startUntil(due);
    holdUpUntil(due + 1ms);
    timer->stop();
    spinFor(10);
    EXPECT_TRUE(fired.empty());
    timer->startUntil(Clock::now());
    EXPECT_TRUE(spinUntil([this] { return !fired.empty(); }));
}

TEST_P(FineTimerRules, FiresWithinALoopOfItsOwnAction) {
    QObject::connect(timer.get(), &FineTimer::timeout, timer.get(), [this] {
        if (fired.size() > 1) return;
        timer->startUntil(Clock::now() + 1ms);
        spinUntil([this] { return fired.size() > 1; });
    });
    timer->startUntil(Clock::now());
    EXPECT_TRUE(spinUntil([this] { return fired.size() > 1; }));
    spinFor(5);
    EXPECT_EQ(fired.size(), 2U);
}

TEST_P(FineTimerRules, DestroyedTimerIsSilent) {
    timer->startUntil(Clock::now());
    timer.reset();
    spinFor(5);
    EXPECT_TRUE(fired.empty());
}

TEST(TimerDescriptor, NoneIsOpenWhenNoneCanBeHad) {
    EXPECT_TRUE(TimerDescriptor().isOpen());
    const NoDescriptors none;
    EXPECT_FALSE(TimerDescriptor().isOpen());
}

TEST(TimerDescriptor, MomentIsTakenOnce) {
    TimerDescriptor descriptor;
    EXPECT_FALSE(descriptor.takeExpiry());
    descriptor.arm(Clock::now() + 3600s);
    EXPECT_FALSE(descriptor.takeExpiry());
    const auto due = Clock::now() + 1ms;
    descriptor.arm(due);
    holdUpUntil(due + 1ms);
    EXPECT_TRUE(descriptor.takeExpiry());
    EXPECT_FALSE(descriptor.takeExpiry());
}

}  // namespace
}  // namespace veloran
