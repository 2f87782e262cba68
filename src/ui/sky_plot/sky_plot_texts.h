#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/instant.h"
#include "orbit/look_angles.h"
#include "orbit/pass_predictor.h"
#include "ui/ink.h"

namespace veloran {

// The texts of the sky plot as pure functions, the same under every locale. Numbers are padded to a
// fixed width, so that they stand still while their digits change; one that is not finite reads
// "—".

std::string plotAngleText(double degrees);             ///< " 45.600°"
std::string plotRangeText(double km);                  ///< " 750.667 km"
std::string plotVelocityText(double rangeRateKmPerS);  ///< "↑ 4.039 km/s", up when approaching
/// "  +10.0 m/s²" from the range rate now and one second ahead, km/s.
std::string plotAccelerationText(double rangeRate, double rangeRateAhead);
Ink rangeRateColor(double rangeRateKmPerS);  ///< green when approaching
std::string degreeLabel(int degree);         ///< "015"

/// Where a moment stands in a pass.
enum class PassPhase { beforeAOS, rising, atTCA, setting, ended };

PassPhase passPhase(Instant now, const PredictedPass& pass);
std::string_view passPhaseText(PassPhase phase);
Ink passPhaseColor(PassPhase phase);

/// "-12m30s" until the pass begins, "+4m10s" until it ends, then "ended".
std::string passCountdown(Instant now, const PredictedPass& pass);
std::string formatHMS(double seconds);  ///< "1h05m", "4m10s"

/// Where a body is, for a screen reader. `name` is empty without a body, `ahead` is its place two
/// seconds later.
std::string skyDescription(std::string_view name, const std::optional<TopocentricResult>& now,
                           const std::optional<TopocentricResult>& ahead);

}  // namespace veloran
