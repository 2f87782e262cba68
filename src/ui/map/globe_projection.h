#pragma once

#include "orbit/constants.h"
#include "ui/map/map_projection.h"
#include "ui/map/sphere.h"

namespace veloran {

/// A sphere in vertical perspective: the eye stands over the centre and looks straight down
/// (Snyder, "Map Projections: A Working Manual", 1987, section 23). Lengths are radii of the Earth.
class GlobeProjection final : public MapProjection {
  public:
    static constexpr double kRadiusMetres = WGS84::radiusEarthKm * 1000;
    static constexpr double kGreatestDistance = 7e7;  ///< metres

    GlobeProjection(const MapCamera& camera, QSizeF size);

    std::vector<scene::Point> toScreen(GeoPoint point) const override;
    std::optional<GeoPoint> toGeo(scene::Point point) const override;
    std::vector<ScreenLine> line(const GeoRing& points) const override;
    std::vector<ScreenLine> area(const GeoRing& ring) const override;
    std::vector<ScreenLine> region(const GroundRegion& region) const override;

    // The globe is a disc in the middle of the view.
    scene::Point middle() const { return middle_; }
    double limbRadius() const;

    /// The eye's frame: x to the right in the view, y up, z towards the eye; as vectors of the
    /// Earth.
    struct Frame {
        Vec3 right, up, toEye;
    };
    const Frame& frame() const { return frame_; }
    double eyeDistance() const { return eyeDistance_; }  ///< from the middle of the Earth, above 1
    double focalLength() const { return focalLength_; }  ///< pixels
    double pixelsPerDegree() const;                      ///< in the middle of the view
    /// The part of the Earth that the view shows.
    SphereCap sight() const;

    /// The height in metres from which so many degrees of the ground fill the width of a view.
    static double distanceForWidth(double degrees, QSizeF size);

  private:
    Vec3 inFrame(GeoPoint point) const;
    SphereLine inFrame(const GeoRing& points) const;
    scene::Point place(const Vec3& point) const;
    std::vector<ScreenLine> place(const std::vector<SphereLine>& shapes) const;
    double limb() const { return 1 / eyeDistance_; }  ///< least z that the eye sees

    scene::Point middle_;
    Frame frame_;
    double eyeDistance_;
    double focalLength_;
};

}  // namespace veloran
