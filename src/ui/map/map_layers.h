#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/pass_info.h"
#include "ui/map/map_camera.h"
#include "ui/map/pass_track_cache.h"
#include "ui/scene/scene.h"

namespace veloran {

// What lies on the map, in places of the ground; the scene puts it into the view.

struct MapArea {
    GroundRegion region;
    scene::Fill fill;
    bool operator==(const MapArea&) const = default;
};

struct MapLine {
    GeoRing points;
    scene::Stroke stroke;
    bool operator==(const MapLine&) const = default;
};

/// A station on the ground.
struct MapSite {
    GeoPoint at;
    std::string label;
    Symbol symbol;
    Paint paint;
    bool onPicture = false;  ///< whose colours do not follow the theme: it then needs a plate
    bool operator==(const MapSite&) const = default;
};

struct MapSatellite {
    GeoPoint at;
    std::string name;
    Paint paint;
    bool operator==(const MapSatellite&) const = default;
};

using MapLayer = std::variant<MapArea, MapLine, MapSite, MapSatellite>;
/// In drawing order.
using MapLayers = std::vector<MapLayer>;

struct MapContent {
    MapStyle style = MapStyle::standard;
    MapSite home;
    std::optional<MapSite> second;
    std::optional<PassInfo> selectedPass;
    double extendedTrackHours = 0;
};

MapSite homeSite(GeoPoint at, std::string_view name);
MapSite secondSite(GeoPoint at, std::string_view name);

/// `cache` is of the selected pass.
MapLayers mapLayers(const MapContent& content, const PassTrackCache& cache, Instant now);

/// Where the body of the selected pass is; absent without a pass or an orbit.
std::optional<SubSatellitePoint> currentSubSatellitePoint(const std::optional<PassInfo>& selected,
                                                          Instant now);

}  // namespace veloran
