#pragma once

#include <string_view>

namespace veloran {

/// Whether a satellite is among those that are selected where the user has selected none: its name
/// has a known one in it, in any case of letters.
bool matchesDefault(std::string_view name);

}  // namespace veloran
