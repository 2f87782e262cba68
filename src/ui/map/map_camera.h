#pragma once

#include <string>
#include <string_view>

#include "orbit/ground_geometry.h"

namespace veloran {

enum class MapStyle { standard, imagery, hybrid };
inline constexpr MapStyle kMapStyles[] = {MapStyle::standard, MapStyle::imagery, MapStyle::hybrid};

std::string_view mapStyleName(MapStyle style);   ///< as stored: "standard", …
std::string_view mapStyleLabel(MapStyle style);  ///< as shown: "Map", "Satellite", "Hybrid"
/// The first style for an unknown name.
MapStyle mapStyleNamed(std::string_view name);
/// The flat map, or the globe.
constexpr bool isFlat(MapStyle style) {
    return style == MapStyle::standard;
}

/// Where the map is looked at from.
struct MapCamera {
    GeoPoint center;        ///< in the middle of the view
    double distance = 5e7;  ///< metres: on the globe the height of the eye over the ground
    double heading = 0;  ///< degrees clockwise from north that point up; the flat map has north up

    bool operator==(const MapCamera&) const = default;
};

/// The whole picture for a style, the observer in its middle; degrees.
MapCamera fittedCamera(MapStyle style, double observerLongitude);

/// Between two cameras, the short way round; `share` from 0 to 1 is eased at both ends.
MapCamera easedCamera(const MapCamera& from, const MapCamera& to, double share);

}  // namespace veloran
