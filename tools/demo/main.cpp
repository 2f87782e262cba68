// Shows the program at work without a network, a radio or settings of one's own: the same parts as
// the program's main(), beside local servers.

#include <fmt/format.h>

#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <memory>
#include <optional>

#include "app/desktop_life.h"
#include "app/desktop_machine.h"
#include "base/unique_id.h"
#include "demo/demo.h"
#include "demo/demo_figures.h"
#include "demo/demo_options.h"
#include "demo/demo_report.h"
#include "demo/demo_windows.h"
#include "demo/local_station.h"
#include "demo/watched_loop.h"
#include "sample_catalogue/sample_catalogue.h"
#include "servers/flooding_radio.h"
#include "ui/main_window.h"
#include "ui/theme.h"

namespace {

using namespace veloran;

std::unique_ptr<FloodingRadio> floodingRadio(DemoFlood flood) {
    switch (flood) {
        case DemoFlood::none:
            return nullptr;
        case DemoFlood::lineFeeds:
            return std::make_unique<FloodingRadio>(FloodingRadio::lineFeeds());
        case DemoFlood::line:
            return std::make_unique<FloodingRadio>(FloodingRadio::endlessLine());
        case DemoFlood::binary:
            return std::make_unique<FloodingRadio>(FloodingRadio::binary());
    }
    return nullptr;
}

void pointAtStation(AppState& state, const LocalStation& station, std::uint16_t radioPort,
                    const DemoOptions& options) {
    const UserTLESource own{UniqueId::make().text(), "Own source", station.ownSourceUrl()};
    state.userSources().add(own);
    std::set<std::string> groups{"amateur", "stations", "weather", own.categoryKey()};
    if (options.satellites > 0) groups.insert("active");
    state.subscribedCategories = groups;
    state.rigHost = std::string("127.0.0.1");
    state.rigPort = std::int64_t{radioPort};
    state.dopplerUpdateHz = options.rateHz;
}

/// 0, or 1 when there was nothing to show or the picture could not be written.
int finish(const AppState& state, const Demo& demo, const LocalStation& station,
           const QPixmap& picture, const DemoOptions& options) {
    const bool saved = options.screenshot.isEmpty() || picture.save(options.screenshot);
    fmt::print("{}", demoReport(state, demo, station, options));
    if (!saved) {
        fmt::print(stderr, "veloran-demo: {} cannot be written\n",
                   options.screenshot.toStdString());
    }
    std::fflush(stdout);
    return saved && demo.pickedPass() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const DemoOptions options = readDemoOptions(argc, argv);
    WatchedApplication application(argc, argv);
    // One to look at is the only one; those that end by themselves do so beside it and each other.
    std::optional<SingleInstance> instance;
    if (!options.seconds) {
        instance.emplace("veloran-demo");
        if (int exitCode = 0; !goesOn(*instance, exitCode)) return exitCode;
    }
    Theme::apply(options.dark.value_or(Application::isDesktopDark()));

    const QTemporaryDir home;
    DesktopMachine desktop(home.path().toStdString(), home.filePath("settings.json").toStdString());
    LocalStation station(options.log);
    if (const auto trouble = station.start(startOfDay(desktop.clock.now()), options.satellites);
        !trouble.empty()) {
        fmt::print(stderr, "veloran-demo: {}\n", trouble);
        return 1;
    }

    const auto flooding = floodingRadio(options.flood);
    if (flooding && !flooding->start()) {
        fmt::print(stderr, "veloran-demo: no free port on 127.0.0.1\n");
        return 1;
    }

    AppConfig config;
    config.elementServiceBase = station.web().base();
    config.transmitterServiceBase = station.web().base();
    config.transmitterFile = VELORAN_SAMPLE_TRANSMITTERS;
    CustomTLEStore(desktop.files).importFromText(station.importText());
    desktop.settings.set("mapStyle", options.mapStyle);
    WatchedLoop loop(desktop.loop);
    const Machine& machine = desktop.machine;
    const Machine watched{machine.clock, loop,         machine.workers, machine.settings,
                          machine.files, machine.http, machine.tcp,     machine.location};
    const auto state = AppState::create(watched, config);
    pointAtStation(*state, station, flooding ? flooding->port() : station.radio().port(), options);

    MainWindow window(state);
    window.resize(options.size);
    std::optional<DesktopLife> life;
    if (instance) life.emplace(state, window, desktop, *instance);
    QObject::connect(&window, &MainWindow::quitRequested, [&] {
        if (!life) QApplication::closeAllWindows();
    });
    window.show();
    DemoFigures figures(application, loop, options.rateHz);
    Demo demo(state, options);
    demo.onReady = [&] {
        openWindow(options.show, window, *state, station);
        if (options.resize) keepResizing(window);
        figures.begin();
    };
    demo.start(desktop.loop);
    QPixmap lastPicture;
    if (options.seconds) {
        QTimer::singleShot(static_cast<int>(*options.seconds * 1000), &application, [&] {
            lastPicture = picture(window, options.part);  // with a dialog that quitting would close
            QApplication::quit();
        });
    }
    QApplication::exec();
    if (lastPicture.isNull()) lastPicture = picture(window, options.part);
    if (options.figures) fmt::print("{}", figures.report());
    if (flooding) {
        fmt::print("{:<12}{:.1f} MB\n", "flooded",
                   static_cast<double>(flooding->bytesSent()) / 1e6);
    }
    return finish(*state, demo, station, lastPicture, options);
}
