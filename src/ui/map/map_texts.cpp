#include "ui/map/map_texts.h"

#include <fmt/format.h>

#include <cmath>

namespace veloran {

std::string trackHoursText(double hours) {
    return hours == 0 ? "off" : fmt::format("±{:.1f}h", hours);
}

std::string observerAnnotation(std::string_view name) {
    return std::string(name.empty() ? "Home" : name);
}

std::string positionInWords(const Satellite& satellite,
                            const std::optional<SubSatellitePoint>& point) {
    if (!point) return satellite.name + ", its position is not known";
    // The Sun's and the Moon's altitude is their distance.
    const char* how = satellite.bodyKind == BodyKind::sgp4 ? "high" : "away";
    return fmt::format("{} over {:.1f}° {} {:.1f}° {}, {:.0f} km {}", satellite.name,
                       std::abs(point->latitudeDeg), point->latitudeDeg >= 0 ? "N" : "S",
                       std::abs(point->longitudeDeg), point->longitudeDeg >= 0 ? "E" : "W",
                       point->altitudeKm, how);
}

}  // namespace veloran
