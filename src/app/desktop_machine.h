#pragma once

#include <filesystem>

#include "platform/machine.h"
#include "qt/disk_files.h"
#include "qt/disk_settings.h"
#include "qt/qt_http_client.h"
#include "qt/qt_location_service.h"
#include "qt/qt_main_loop.h"
#include "qt/qt_tcp_network.h"
#include "qt/system_clock.h"
#include "qt/thread_workers.h"

namespace veloran {

/// The machine that the desktop program runs on. Needs a QCoreApplication, and outlives every
/// AppState made with it.
struct DesktopMachine {
    DesktopMachine(std::filesystem::path home, std::filesystem::path settingsFile,
                   const QtHttpOptions& httpOptions = {});

    SystemClock clock;
    QtMainLoop loop;
    DiskFiles files;
    DiskSettings settings;
    QtHttpClient http;
    QtTcpNetwork tcp;
    QtLocationService location;
    /// The first to go: its tasks use the others, and their results go to the loop.
    ThreadWorkers workers;
    Machine machine;
};

}  // namespace veloran
