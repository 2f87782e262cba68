#pragma once

#include "ui/map/map_projection.h"

namespace veloran {

/// Equirectangular with north up; the world repeats to the left and to the right.
class FlatProjection final : public MapProjection {
  public:
    /// Where 180 degrees of latitude fill the height of the view, metres.
    static constexpr double kWholeHeightDistance = 5e7;

    FlatProjection(const MapCamera& camera, QSizeF size);

    std::vector<scene::Point> toScreen(GeoPoint point) const override;
    std::optional<GeoPoint> toGeo(scene::Point point) const override;
    std::vector<ScreenLine> line(const GeoRing& points) const override;
    std::vector<ScreenLine> area(const GeoRing& ring) const override;
    std::vector<ScreenLine> region(const GroundRegion& region) const override;

    /// The y of a latitude; of the poles, the edges of the world.
    double yOf(double lat) const;
    double pixelsPerDegree() const { return scale_; }
    static double pixelsPerDegree(double distance, QSizeF size);

  private:
    /// In the copy of the world about the middle of the view; longitudes need not be wrapped.
    scene::Point place(GeoPoint point) const;
    ScreenLine place(const GeoRing& unwrapped) const;
    /// Appends those copies of a shape that reach into the view.
    void appendCopies(const ScreenLine& shape, std::vector<ScreenLine>& out) const;
    /// Between a ring round a pole, in all copies, and the edge of the world at this pole.
    ScreenLine polarArea(const GeoRing& unwrapped, double turn, double poleLat) const;
    ScreenLine wholeWorld() const;

    GeoPoint center_;
    double width_, height_, scale_;
};

}  // namespace veloran
