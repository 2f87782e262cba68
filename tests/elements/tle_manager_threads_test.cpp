#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "elements/element_records.h"
#include "elements/tle_manager.h"
#include "support/simulated_machine.h"

namespace veloran {
namespace {

/// Plays the unkindest order of two threads on one: what a worker posts runs, and goes, before the
/// worker comes to its next line, so that whatever the worker still holds it lets go last.
class QuickMainThread final : public MainLoop, public WorkerPool {
  public:
    explicit QuickMainThread(test::SimulatedLoop& loop) : loop_(loop) {}

    void run(Task task, Priority /*priority*/) override {
        loop_.post([this, task = std::move(task)]() mutable {
            isWorker = true;
            task();
            task = nullptr;
            isWorker = false;
        });
    }
    void post(Task task) override {
        if (!isWorker) return loop_.post(std::move(task));
        isWorker = false;
        task();
        task = nullptr;
        isWorker = true;
    }
    void after(double seconds, Task task) override { loop_.after(seconds, std::move(task)); }
    std::unique_ptr<Timer> every(double seconds, Task task) override {
        return loop_.every(seconds, std::move(task));
    }

    bool isWorker = false;

  private:
    test::SimulatedLoop& loop_;
};

/// Something that belongs to the main thread, held by a completion.
class MainThreadsOwn {
  public:
    MainThreadsOwn(const QuickMainThread& threads, int& wrongThread)
        : threads_(threads), wrongThread_(wrongThread) {}
    MainThreadsOwn(const MainThreadsOwn& other)
        : threads_(other.threads_), wrongThread_(other.wrongThread_) {
        note();
    }
    ~MainThreadsOwn() { note(); }

  private:
    void note() const {
        if (threads_.isWorker) ++wrongThread_;
    }
    const QuickMainThread& threads_;
    int& wrongThread_;
};

class TLEManagerThreadsTest : public ::testing::Test {
  protected:
    /// A completion that tells of its call, and whose copies are watched.
    auto completion() {
        return [this, own = MainThreadsOwn(threads, wrongThread)](const auto&) {
            ++calls;
            if (threads.isWorker) ++wrongThread;
        };
    }
    std::string url(const std::string& query) const {
        return "http://service/NORAD/elements/gp.php?" + query + "&FORMAT=json";
    }

    test::SimulatedMachine simulated;
    QuickMainThread threads{simulated.loop};
    const Machine& all = simulated.machine;
    Machine machine{all.clock, threads,  threads, all.settings,
                    all.files, all.http, all.tcp, all.location};
    int wrongThread = 0;
    int calls = 0;
    bool wasMergedByWorker = false;
    TLEManager manager{machine, "http://service", {.categories = {}, .importedSets = [this] {
                                                       wasMergedByWorker = threads.isWorker;
                                                       return std::vector<TLEData>{};
                                                   }}};
};

TEST_F(TLEManagerThreadsTest, CompletionsStayOnTheMainThreadAndGoThere) {
    const auto body = test::messages({test::stationMessage()});
    for (const char* query : {"GROUP=amateur", "GROUP=weather", "CATNR=7"}) {
        simulated.http.answers[url(query)] = {body, 1, false};
    }
    const auto directory = simulated.files.homeDirectory() / ".veloran" / "tle";
    simulated.files.files[directory / "noaa.tle"] = body;
    simulated.files.files[directory / "noaa.timestamp"] =
        std::to_string(simulated.loop.now().unixSeconds());

    manager.fetchCategories({"noaa", "amateur", "weather", "goes", "nonsense"}, completion(),
                            {.cached = completion(), .looked = {}, .downloaded = {}});
    manager.fetchCategory("amateur", completion());
    manager.fetchByNoradId(7, completion());
    simulated.loop.advance(60);
    EXPECT_EQ(calls, 4);
    EXPECT_TRUE(wasMergedByWorker);
    EXPECT_EQ(wrongThread, 0);
}

}  // namespace
}  // namespace veloran
