// From the press of a button to the list: the whole load on the desktop program's machine, over a
// connection to a server on a thread of its own.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QThread>
#include <future>
#include <memory>
#include <set>
#include <string>

#include "app/desktop_machine.h"
#include "core/app_state.h"
#include "servers/http_server.h"
#include "synthetic_catalogue.h"

namespace veloran::bench {
namespace {

constexpr std::size_t kSatellites = 11000;

/// The element service with the synthetic catalogue as one of its groups.
class ElementService {
  public:
    ElementService() : thread_(QThread::create([this] { serve(); })) {
        thread_->start();
        base_ = started_.get_future().get();
    }
    ~ElementService() {
        thread_->quit();
        thread_->wait();
    }

    const std::string& base() const { return base_; }

  private:
    void serve() {
        HttpServer server;
        server.serve("/NORAD/elements/gp.php",
                     {.body = groupText(syntheticCatalogue(kSatellites))});
        const bool hasPort = server.start();
        started_.set_value(hasPort ? server.base() : std::string());
        QEventLoop().exec();
    }

    std::unique_ptr<QThread> thread_;
    std::promise<std::string> started_;
    std::string base_;
};

/// A program that was started for the first time.
struct FreshProgram {
    explicit FreshProgram(const std::string& service)
        : machine(home.path().toStdString(), home.filePath("settings.json").toStdString()),
          state(AppState::create(machine.machine, {.elementServiceBase = service,
                                                   .transmitterServiceBase = service,
                                                   .presetHosts = {},
                                                   .transmitterFile = {}})) {
        state->subscribedCategories = std::set<std::string>{"active"};
    }

    void load() {
        state->loadData();
        while (state->isLoadingTLEs.get()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

    QTemporaryDir home;
    DesktopMachine machine;
    std::shared_ptr<AppState> state;
};

/// Request, answer, cache, decoding, lines, merge, records, and the sorted list.
void wholeLoadOf11000(benchmark::State& state) {
    const ElementService service;
    for (auto _ : state) {
        state.PauseTiming();
        auto program = std::make_unique<FreshProgram>(service.base());
        state.ResumeTiming();
        program->load();
        state.PauseTiming();
        if (program->state->satellites->size() < kSatellites) {
            state.SkipWithError("the list is not whole");
        }
        program.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(wholeLoadOf11000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace veloran::bench
