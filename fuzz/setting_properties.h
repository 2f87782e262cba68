#pragma once

#include "core/app_state.h"

namespace veloran::fuzz {

bool lies(double value, double lowest, double highest);

/// What the program bears: of a position what has a locator, no number beyond kLargestNumber, a
/// port of 16 bits.
void requireBearableSettings(const AppState& app);

}  // namespace veloran::fuzz
