#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/satellite.h"

namespace veloran {

std::string trackHoursText(double hours);               ///< "±1.5h"; "off" at 0
std::string observerAnnotation(std::string_view name);  ///< "Home" for an empty name

/// Where a body is, in words: "RS-44 over 12.3° N 45.6° W, 1234 km high".
std::string positionInWords(const Satellite& satellite,
                            const std::optional<SubSatellitePoint>& point);

}  // namespace veloran
