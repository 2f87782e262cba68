#include "qt/thread_workers.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <QHash>
#include <QString>
#include <algorithm>
#include <atomic>
#include <numeric>
#include <set>
#include <thread>
#include <vector>

#include "qt/qt_main_loop.h"
#include "qt/spin.h"
#include "support/vector_halves.h"

namespace veloran {
namespace {

using test::spinUntil;

TEST(ThreadWorkers, TasksRunOffTheMainThreadAndPostTheirResultsBack) {
    QtMainLoop loop;
    ThreadWorkers workers(4);
    std::vector<long> sums;
    bool offMainThread = true;
    for (int task = 0; task < 100; ++task) {
        std::vector<long> numbers(1000, task);
        workers.run([&, main = std::this_thread::get_id(), numbers = std::move(numbers)] {
            const long sum = std::accumulate(numbers.begin(), numbers.end(), 0L);
            const bool isOff = std::this_thread::get_id() != main;
            loop.post([&sums, &offMainThread, sum, isOff] {
                sums.push_back(sum);
                offMainThread &= isOff;
            });
        });
    }
    ASSERT_TRUE(spinUntil([&] { return sums.size() == 100; }));
    EXPECT_TRUE(offMainThread);
    EXPECT_EQ(std::accumulate(sums.begin(), sums.end(), 0L), 4950L * 1000);
}

TEST(ThreadWorkers, OneThreadKeepsTheOrder) {
    QtMainLoop loop;
    ThreadWorkers workers(1);
    std::vector<int> ran;
    for (int i = 0; i < 100; ++i) {
        workers.run([&loop, &ran, i] { loop.post([&ran, i] { ran.push_back(i); }); });
    }
    ASSERT_TRUE(spinUntil([&] { return ran.size() == 100; }));
    EXPECT_TRUE(std::ranges::is_sorted(ran));
}

#ifdef __linux__
TEST(ThreadWorkers, WorkersGiveWayAndTheMainThreadDoesNot) {
    constexpr int kHighest = 19;
    const auto niceness = [] { return getpriority(PRIO_PROCESS, 0); };  // of the calling thread
    QtMainLoop loop;
    const int before = niceness();
    ThreadWorkers workers(2);
    std::vector<int> ofWorkers;
    for (int i = 0; i < 20; ++i) {
        workers.run([&] { loop.post([&, own = niceness()] { ofWorkers.push_back(own); }); });
    }
    ASSERT_TRUE(spinUntil([&] { return ofWorkers.size() == 20; }));
    EXPECT_THAT(ofWorkers, ::testing::Each(std::min(before + 10, kHighest)));
    EXPECT_EQ(niceness(), before);
}
#endif

TEST(ThreadWorkers, EachTaskBeginsWithTheUpperHalvesOfTheVectorRegistersFree) {
    const bool canSee = test::canSeeUpperHalves();
    const auto lookUp = [] {
        const QHash<QString, int> numbers{{"one", 1}, {"two", 2}};
        return numbers.value("two");
    };
    QtMainLoop loop;
    ThreadWorkers workers(1);
    // A thread inherits the state of the one that starts it, and keeps that of its last task.
    test::dirtyUpperHalves();
    std::vector<int> found;
    std::vector<bool> wereInUse;
    for (int i = 0; i < 10; ++i) {
        workers.run([&] {
            const bool inUse = canSee && test::areUpperHalvesInUse();
            const int two = lookUp();
            test::dirtyUpperHalves();
            loop.post([&, inUse, two] {
                wereInUse.push_back(inUse);
                found.push_back(two);
            });
        });
    }
    ASSERT_TRUE(spinUntil([&] { return found.size() == 10; }));
    EXPECT_THAT(wereInUse, ::testing::Each(false));
    EXPECT_THAT(found, ::testing::Each(2));
}

TEST(ThreadWorkers, TheEndWaitsForWhatRunsAndDropsWhatHasNotBegun) {
    std::atomic<bool> begun = false;
    bool finished = false;
    bool secondRan = false;
    auto onlyInSecond = std::make_shared<int>(0);
    const std::weak_ptr<int> second = onlyInSecond;
    {
        ThreadWorkers workers(1);
        workers.run([&, second] {
            begun = true;
            // Only the end of the pool lets go of the second task.
            while (!second.expired()) std::this_thread::yield();
            finished = true;
        });
        workers.run([&secondRan, onlyInSecond] { secondRan = true; });
        onlyInSecond.reset();
        ASSERT_TRUE(spinUntil([&] { return begun.load(); }));
    }
    EXPECT_TRUE(finished);
    EXPECT_FALSE(secondRan);
}

}  // namespace
}  // namespace veloran
