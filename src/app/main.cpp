#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <clocale>
#include <filesystem>
#include <optional>

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

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128;
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    // Qt takes the user's locale for everything; numbers of libraries below it stay with a point.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName("Veloran");
    QApplication::setApplicationVersion(VELORAN_VERSION);
    QApplication::setDesktopFileName("veloran");

    veloran::Theme::apply(isDark(QApplication::palette()));
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
    window.show();
    return QApplication::exec();
}
