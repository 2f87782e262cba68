#include "app/desktop_machine.h"

#include <utility>

namespace veloran {

DesktopMachine::DesktopMachine(std::filesystem::path home, std::filesystem::path settingsFile,
                               const QtHttpOptions& httpOptions)
    : files(std::move(home)),
      settings(std::move(settingsFile), loop),
      http(loop, workers, httpOptions),
      tcp(loop),
      location(loop),
      machine{clock, loop, workers, settings, files, http, tcp, location} {}

}  // namespace veloran
