#include "app/application.h"

#include <QPalette>
#include <clocale>

namespace veloran {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    // Qt takes the user's locale for everything; numbers of libraries below it stay with a point.
    std::setlocale(LC_NUMERIC, "C");
    setApplicationName("Veloran");
    setApplicationVersion(VELORAN_VERSION);
    setDesktopFileName("veloran");
}

bool Application::isDesktopDark() {
    return palette().color(QPalette::Window).lightness() < 128;
}

}  // namespace veloran
