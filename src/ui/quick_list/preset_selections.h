#pragma once

#include <string_view>

#include "core/app_state.h"

namespace veloran {

// Selections at one click; each is one change with one search of passes.

void selectAll(AppState& state);
/// Selects the bodies with a channel and no others, whatever the category: of all groups, those are
/// what an amateur can work with.
void selectByCategory(AppState& state, std::string_view category);

}  // namespace veloran
