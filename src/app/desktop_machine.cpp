#include "app/desktop_machine.h"

#include <utility>

namespace veloran {

DesktopMachine::DesktopMachine(std::filesystem::path home, std::filesystem::path settingsFile,
                               double httpIdleSeconds)
    : files(std::move(home)),
      settings(std::move(settingsFile), loop),
      http(loop, httpIdleSeconds),
      tcp(loop),
      location(loop),
      machine{clock, loop, workers, settings, files, http, tcp, location} {}

}  // namespace veloran
