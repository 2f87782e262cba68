#pragma once

#include <QSizeF>
#include <memory>
#include <optional>
#include <vector>

#include "orbit/ground_geometry.h"
#include "ui/map/map_camera.h"
#include "ui/scene/scene.h"

namespace veloran {

using ScreenLine = std::vector<scene::Point>;

/// From the ground to the view and back, for one camera and one size of the view (logical pixels).
/// An immutable value: a moved camera is another projection.
class MapProjection {
  public:
    virtual ~MapProjection() = default;

    /// Every place where a point of the ground is drawn: none behind the limb of the globe; on the
    /// flat map one for each copy of the world that the view shows.
    virtual std::vector<scene::Point> toScreen(GeoPoint point) const = 0;
    /// The ground below a point of the view; absent beside the world.
    virtual std::optional<GeoPoint> toGeo(scene::Point point) const = 0;

    /// The visible pieces of an open line through these points: cut at the limb, and where the flat
    /// world ends, and drawn in every copy of the world.
    virtual std::vector<ScreenLine> line(const GeoRing& points) const = 0;
    /// The visible parts of the area inside a ring, each to be filled; a ring may lie across the
    /// date line, the limb, or round a pole. The inside is the side that is smaller on the sphere.
    virtual std::vector<ScreenLine> area(const GeoRing& ring) const = 0;
};

/// The flat map for MapStyle::standard (equirectangular), else the globe (vertical perspective).
std::unique_ptr<MapProjection> makeProjection(MapStyle style, const MapCamera& camera, QSizeF size);

}  // namespace veloran
