#pragma once

#include <QApplication>

#include "app/quit_signals.h"

namespace veloran {

/// What every program with Veloran's window starts with: name, version, numbers with a point, and
/// an end in good order.
class Application : public QApplication {
  public:
    Application(int& argc, char** argv);

    /// Whether the desktop's own colours are dark; before a theme has been applied.
    static bool isDesktopDark();

  private:
    QuitSignals quitSignals_;
};

}  // namespace veloran
