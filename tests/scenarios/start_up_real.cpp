// The first moments of the program without a network: the window comes first.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <QEvent>

#include "scenarios/real_station.h"
#include "ui/main_window.h"

namespace veloran {
namespace {

using test::LoopWatch;
using test::spinUntil;
using test::steadySeconds;

/// Notes the first time that a window is painted.
class FirstPaint : public QObject {
  public:
    explicit FirstPaint(QWidget& window) { window.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        isPainted = isPainted || event->type() == QEvent::Paint;
        return false;
    }
    bool isPainted = false;
};

/// Watches one start-up from the empty home to the painted window.
struct StartUp {
    explicit StartUp(const std::string& serviceBase)
        : state(AppState::create(machine.machine(), {.elementServiceBase = serviceBase,
                                                     .transmitterServiceBase = serviceBase,
                                                     .presetHosts = {},
                                                     .transmitterFile = {}})) {
        window = std::make_unique<MainWindow>(state);
        paint = std::make_unique<FirstPaint>(*window);
        watching = state->objectWillChange.subscribe([this] {
            loadingSeen = loadingSeen || state->isLoadingTLEs.get();
            if (loadingSeen && !state->isLoadingTLEs.get() && !paint->isPainted) {
                loadedUnpainted = true;
            }
        });
        begun = steadySeconds();
        window->show();
    }
    bool waitForPaint() {
        const bool painted = spinUntil([this] { return paint->isPainted; });
        fmt::print("painted {:.0f} ms after it was shown\n", 1000 * (steadySeconds() - begun));
        return painted;
    }

    test::TemporaryMachine machine;
    std::shared_ptr<AppState> state;
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<FirstPaint> paint;
    ChangeNotifier::Subscription watching;
    bool loadingSeen = false;
    bool loadedUnpainted = false;
    double begun = 0;
};

TEST(StartUpWithoutNetwork, ServerThatNeverAnswersLeavesAPaintedWindowThatLoads) {
    HttpServer server;
    ASSERT_TRUE(server.start());
    server.serve("/NORAD/elements/gp.php", {.fault = HttpFault::neverAnswer});
    StartUp start(server.base());
    ASSERT_TRUE(start.waitForPaint());
    ASSERT_TRUE(spinUntil([&] { return server.requests().size() == 2; })) << "one for each group";
    EXPECT_TRUE(start.state->isLoadingTLEs.get());
    EXPECT_TRUE(start.state->satellites->empty());

    // The window goes on living while the load hangs.
    const LoopWatch watch;
    ASSERT_TRUE(spinUntil([&] { return watch.beats() >= 20; }));
    EXPECT_LT(watch.longestGapSeconds(), 0.4);
}

TEST(StartUpWithoutNetwork, RefusedServerLeavesSunAndMoonInAPaintedWindow) {
    StartUp start("http://127.0.0.1:" + std::to_string(test::freePort()));
    ASSERT_TRUE(start.waitForPaint());
    ASSERT_TRUE(spinUntil([&] { return start.loadingSeen && !start.state->isLoadingTLEs.get(); }));
    EXPECT_FALSE(start.loadedUnpainted) << "the window waits for no load";
    ASSERT_EQ(start.state->satellites->size(), 2u);
    EXPECT_EQ((*start.state->satellites)[0]->name, "Moon");
    EXPECT_EQ((*start.state->satellites)[1]->name, "Sun");
}

}  // namespace
}  // namespace veloran
