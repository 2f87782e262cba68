#include <QDir>
#include <QStandardPaths>
#include <filesystem>
#include <optional>

#include "app/application.h"
#include "app/command_line.h"
#include "app/desktop_life.h"
#include "app/desktop_machine.h"
#include "core/app_state.h"
#include "qt/desktop_appearance.h"
#include "ui/main_window.h"
#include "ui/theme.h"

namespace {

std::filesystem::path pathOf(const QString& text) {
    return text.toStdString();
}

/// The database of channels of an installed program.
std::optional<std::filesystem::path> installedTransmitterFile() {
    const auto file =
        pathOf(QApplication::applicationDirPath()) / "../share/veloran/transmitters.json";
    std::error_code unreadable;
    if (!std::filesystem::exists(file, unreadable)) return std::nullopt;
    return file;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (const auto code = veloran::answeredWithoutWindow(argc, argv)) return *code;
    veloran::Application application(argc, argv);
    veloran::SingleInstance instance("veloran");
    if (int exitCode = 0; !veloran::goesOn(instance, exitCode)) return exitCode;
    veloran::Theme::apply(veloran::Application::isDesktopDark());
    veloran::DesktopAppearance appearance;
    QObject::connect(&appearance, &veloran::DesktopAppearance::changed, &veloran::Theme::apply);

    const QString settingsDirectory =
        QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    veloran::DesktopMachine desktop(pathOf(QDir::homePath()),
                                    pathOf(settingsDirectory) / "settings.json");
    veloran::AppConfig config;
    config.transmitterFile = installedTransmitterFile();
    const auto state = veloran::AppState::create(desktop.machine, config);

    veloran::MainWindow window(state);
    const veloran::DesktopLife life(state, window, desktop, instance);
    window.show();
    return QApplication::exec();
}
