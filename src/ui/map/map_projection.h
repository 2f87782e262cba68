#pragma once

#include <QSizeF>
#include <memory>
#include <optional>
#include <vector>

#include "orbit/ground_geometry.h"
#include "ui/map/ground_region.h"
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
    /// flat map one for each copy of the world that the view shows, also where it lies less than
    /// kEdgeMargin beside the view, since a marker reaches in from there.
    virtual std::vector<scene::Point> toScreen(GeoPoint point) const = 0;
    /// The ground below a point of the view; absent beside the world.
    virtual std::optional<GeoPoint> toGeo(scene::Point point) const = 0;

    /// The visible pieces of an open line through these points: cut at the limb of the globe; whole
    /// across the date line, and drawn in every copy of the flat world that reaches into the view.
    virtual std::vector<ScreenLine> line(const GeoRing& points) const = 0;
    /// The visible parts of the area inside a ring, each to be filled; a ring may lie across the
    /// date line, the limb, or round a pole. The inside is the side that is smaller on the sphere;
    /// on the flat map a ring that goes round no pole holds what it encloses.
    virtual std::vector<ScreenLine> area(const GeoRing& ring) const = 0;
    /// The visible part of a region, to be filled as one shape by the even-odd rule.
    virtual std::vector<ScreenLine> region(const GroundRegion& region) const = 0;

    static constexpr double kEdgeMargin = 80;
};

/// The flat map for MapStyle::standard (equirectangular), else the globe (vertical perspective).
std::unique_ptr<MapProjection> makeProjection(MapStyle style, const MapCamera& camera, QSizeF size);

/// Flat: as far away as shows the whole width of the world, and at least the height of the fitted
/// camera. Metres.
double greatestFlatDistance(QSizeF size);
/// The nearest camera that a style allows: the view is about 5 degrees of the ground wide. Metres.
double smallestDistance(MapStyle style, QSizeF size);
/// The nearest to `camera` of what the style can show: distance within its bounds, longitude -180
/// to below 180, heading 0 to below 360; flat: north up, and no more than needed beyond the poles.
/// What is not finite becomes the fitted camera's.
MapCamera clampedCamera(MapStyle style, const MapCamera& camera, QSizeF size);

}  // namespace veloran
