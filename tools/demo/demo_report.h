#pragma once

#include <string>

#include "core/app_state.h"
#include "demo/demo_options.h"
#include "servers/simulated_radio.h"

namespace veloran {

/// What happened, in ten lines.
std::string demoReport(const AppState& state, const std::optional<PassInfo>& picked,
                       const SimulatedRadio& radio, const DemoOptions& options);

}  // namespace veloran
