#pragma once

#include "platform/clock.h"
#include "platform/file_store.h"
#include "platform/http_client.h"
#include "platform/location_service.h"
#include "platform/main_loop.h"
#include "platform/settings_store.h"
#include "platform/tcp.h"

namespace veloran {

/// Everything the program needs of the machine it runs on. The composition root owns the parts and
/// keeps them alive longer than anything that was given this.
struct Machine {
    Clock& clock;
    MainLoop& loop;
    WorkerPool& workers;
    SettingsStore& settings;
    FileStore& files;
    HttpClient& http;
    TcpNetwork& tcp;
    LocationService& location;
};

}  // namespace veloran
