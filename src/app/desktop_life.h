#pragma once

#include <memory>

#include "app/desktop_machine.h"
#include "core/app_state.h"
#include "core/sleep_watch.h"
#include "qt/desktop_notices.h"
#include "qt/desktop_sleep.h"
#include "qt/single_instance.h"
#include "ui/life/program_life.h"
#include "ui/main_window.h"

namespace veloran {

/// What ties a program with a main window into the user's desktop: it goes on without the window,
/// keeps the machine awake, goes on after a sleep, and comes forward when it is started again. Goes
/// before everything that it was given.
struct DesktopLife {
    DesktopLife(std::shared_ptr<AppState> state, MainWindow& window, DesktopMachine& machine,
                SingleInstance& instance);

    DesktopSleep sleep;
    DesktopNotices notices;
    ProgramLife life;
    SleepWatch watch;
};

/// Whether this start of the program goes on: the first one does. Else it says why, and `exitCode`
/// is what the process ends with.
bool goesOn(const SingleInstance& instance, int& exitCode);

}  // namespace veloran
