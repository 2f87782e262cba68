#pragma once

#include <optional>
#include <string>

namespace veloran {

/// The version of the running program; absent when the application has none.
std::optional<std::string> applicationVersion();

}  // namespace veloran
