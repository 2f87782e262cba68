#pragma once

#include <optional>
#include <string>

#include "core/duty.h"

namespace veloran {

// What tray, notice, question and the desktop's list of inhibitors say about the duty, as pure
// functions. Names of satellites come from outside and stand only where markup is not obeyed.

/// "Tracking RS-44 until 21:34", "Next pass: ISS at 22:01, then 2 more", "Nothing to track".
std::string dutyText(const Duty& duty);
/// Why the machine has to stay awake; absent when it may sleep.
std::optional<std::string> stayAwakeReason(const Duty& duty);
/// The title of the notice that the program goes on without its window.
std::string backgroundTitle(const Duty& duty);
/// How to see the window again.
std::string backgroundText(bool hasTray);
/// What quitting ends: "RS-44 is being tracked. 2 queued passes will not be tracked."
std::string quitMessage(const Duty& duty);

}  // namespace veloran
