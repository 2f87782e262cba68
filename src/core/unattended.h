#pragma once

#include "core/app_state.h"
#include "core/duty.h"

namespace veloran {

// What the program does when nobody sits at it, as operations on its state.

/// What it is bound to do now.
Duty dutyOf(const AppState& state);

/// After a sleep of the machine: the radio's connection is tried and the passes are searched anew,
/// now and not when their timers come round. The queue goes on by itself, within a second.
void goOnAfterSleep(AppState& state);

/// Ends the session and takes the pass that it follows out of the queue, which would track it again
/// a second later.
void stopForGood(AppState& state);

}  // namespace veloran
