#include "app/desktop_life.h"

#include <QCoreApplication>
#include <cstdio>

#include "core/unattended.h"

namespace veloran {

DesktopLife::DesktopLife(std::shared_ptr<AppState> state, MainWindow& window,
                         DesktopMachine& machine, SingleInstance& instance)
    : life(state, window, sleep, notices),
      watch(machine.clock, machine.loop, [state] { goOnAfterSleep(*state); }) {
    QObject::connect(&sleep, &DesktopSleep::resumed, &life, [this] { watch.wokeUp(); });
    QObject::connect(&instance, &SingleInstance::called, &life, [this](const QByteArray& token) {
        // Where the desktop asks for one, the leave to take the keyboard is the caller's.
        if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token);
        life.showWindow();
    });
    QObject::connect(&life, &ProgramLife::ended, &life, [] { QCoreApplication::exit(0); });
}

bool goesOn(const SingleInstance& instance, int& exitCode) {
    const bool isUnanswered = instance.role() == SingleInstance::Role::unanswered;
    if (isUnanswered) std::fputs("Veloran runs already, and does not answer.\n", stderr);
    exitCode = isUnanswered ? 1 : 0;
    return instance.role() == SingleInstance::Role::first;
}

}  // namespace veloran
