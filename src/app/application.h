#pragma once

#include <QApplication>

namespace veloran {

/// What every program with Veloran's window starts with: name, version, and numbers with a point.
class Application : public QApplication {
  public:
    Application(int& argc, char** argv);

    /// Whether the desktop's own colours are dark; before a theme has been applied.
    static bool isDesktopDark();
};

}  // namespace veloran
