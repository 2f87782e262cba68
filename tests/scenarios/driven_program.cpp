// The program as its main() joins it, with a home and services of the caller's, for a test that
// works it from outside: veloran-driven HOME SERVICES

#include <QDir>

#include "app/application.h"
#include "app/desktop_life.h"
#include "app/desktop_machine.h"
#include "scenarios/screen_finder.h"
#include "ui/main_window.h"
#include "ui/theme.h"

int main(int argc, char** argv) {
    veloran::Application application(argc, argv);
    if (argc != 3) return 2;
    veloran::SingleInstance instance("veloran");
    if (int exitCode = 0; !veloran::goesOn(instance, exitCode)) return exitCode;
    veloran::Theme::apply(true);
    const std::filesystem::path home = argv[1];
    veloran::DesktopMachine desktop(home, home / "settings.json");
    const auto state =
        veloran::AppState::create(desktop.machine, {.elementServiceBase = argv[2],
                                                    .transmitterServiceBase = argv[2],
                                                    .presetHosts = {},
                                                    .transmitterFile = {}});
    veloran::MainWindow window(state);
    const veloran::DesktopLife life(state, window, desktop, instance);
    window.show();
    const veloran::test::ScreenFinder finder;
    return QApplication::exec();
}
