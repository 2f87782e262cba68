#pragma once

#include <QSocketNotifier>
#include <optional>

namespace veloran {

/// Ends the event loop in good order, so that settings are written and the radio is let go, when
/// the session or a terminal asks the process to end (SIGTERM, SIGHUP, SIGINT). One of these at a
/// time, on the main thread.
class QuitSignals {
  public:
    QuitSignals();
    ~QuitSignals();

  private:
    std::optional<QSocketNotifier> arrived_;
};

}  // namespace veloran
