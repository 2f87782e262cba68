#pragma once

#include <string>

#include "core/app_state.h"
#include "demo/demo.h"
#include "demo/demo_options.h"
#include "demo/local_station.h"

namespace veloran {

/// What happened, in ten lines.
std::string demoReport(const AppState& state, const Demo& demo, const LocalStation& station,
                       const DemoOptions& options);

}  // namespace veloran
