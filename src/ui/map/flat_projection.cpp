#include "ui/map/flat_projection.h"

#include <algorithm>
#include <cmath>

#include "ui/map/sphere.h"

namespace veloran {

namespace {

using scene::Point;

struct Span {
    double least;
    double greatest;
};

template <double Point::*Coordinate>
Span spanOf(const ScreenLine& shape) {
    const auto [least, greatest] = std::minmax_element(
        shape.begin(), shape.end(),
        [](const Point& a, const Point& b) { return a.*Coordinate < b.*Coordinate; });
    return {(*least).*Coordinate, (*greatest).*Coordinate};
}

/// A camera from another planet must not fill the view with copies.
constexpr double kMostCopies = 16;

}  // namespace

FlatProjection::FlatProjection(const MapCamera& camera, QSizeF size)
    : center_(camera.center),
      width_(size.width()),
      height_(size.height()),
      scale_(std::max(pixelsPerDegree(camera.distance, size), size.width() / 360 / kMostCopies)) {}

double FlatProjection::pixelsPerDegree(double distance, QSizeF size) {
    return size.height() / 180 * kWholeHeightDistance / distance;
}

double FlatProjection::yOf(double lat) const {
    return height_ / 2 - (lat - center_.lat) * scale_;
}

Point FlatProjection::place(GeoPoint point) const {
    return {width_ / 2 + (point.lon - center_.lon) * scale_, yOf(point.lat)};
}

ScreenLine FlatProjection::place(const GeoRing& unwrapped) const {
    ScreenLine result;
    result.reserve(unwrapped.size());
    for (const GeoPoint& point : unwrapped) result.push_back(place(point));
    return result;
}

std::vector<Point> FlatProjection::toScreen(GeoPoint point) const {
    std::vector<ScreenLine> copies;
    appendCopies({place(point)}, copies);
    std::vector<Point> result;
    for (const ScreenLine& copy : copies) result.push_back(copy.front());
    return result;
}

std::optional<GeoPoint> FlatProjection::toGeo(Point point) const {
    const double lat = center_.lat + (height_ / 2 - point.y) / scale_;
    if (!(std::abs(lat) <= 90)) return std::nullopt;
    const double lon = std::remainder(center_.lon + (point.x - width_ / 2) / scale_, 360);
    return GeoPoint{lat, lon == 180 ? -180 : lon};
}

void FlatProjection::appendCopies(const ScreenLine& shape, std::vector<ScreenLine>& out) const {
    const Span y = spanOf<&Point::y>(shape);
    if (y.greatest < -kEdgeMargin || y.least > height_ + kEdgeMargin) return;
    const Span x = spanOf<&Point::x>(shape);
    const double world = 360 * scale_;
    const double last = std::floor((width_ + kEdgeMargin - x.least) / world);
    for (double copy = std::ceil((-kEdgeMargin - x.greatest) / world); copy <= last; ++copy) {
        out.push_back(shape);
        for (Point& point : out.back()) point.x += copy * world;
    }
}

std::vector<ScreenLine> FlatProjection::line(const GeoRing& points) const {
    std::vector<ScreenLine> result;
    if (points.size() > 1) appendCopies(place(unwrapped(points)), result);
    return result;
}

std::vector<ScreenLine> FlatProjection::area(const GeoRing& ring) const {
    if (ring.size() < 3) return {};
    const GeoRing points = unwrapped(ring);
    const double turn = turnOf(points);
    std::vector<ScreenLine> result;
    if (std::abs(turn) < 180) {
        appendCopies(place(points), result);
    } else {
        // Eastward has the north pole on the left.
        const bool isNorthern = isLeftSideSmaller(unitVectors(points)) == (turn > 0);
        result.push_back(polarArea(points, turn, isNorthern ? 90 : -90));
    }
    return result;
}

/// Each ring swaps inside and outside on its side away from the north pole.
std::vector<ScreenLine> FlatProjection::region(const GroundRegion& region) const {
    std::vector<ScreenLine> result;
    if (region.holdsNorthPole) result.push_back(wholeWorld());
    for (const GeoRing& ring : region.rings) {
        if (ring.size() < 3) continue;
        const GeoRing points = unwrapped(ring);
        const double turn = turnOf(points);
        if (std::abs(turn) < 180) {
            appendCopies(place(points), result);
        } else {
            result.push_back(polarArea(points, turn, -90));
        }
    }
    return result;
}

ScreenLine FlatProjection::wholeWorld() const {
    const double left = -kEdgeMargin;
    const double right = width_ + kEdgeMargin;
    return {{left, yOf(90)}, {right, yOf(90)}, {right, yOf(-90)}, {left, yOf(-90)}};
}

/// One shape through all copies in view, so that no seam shows between them.
ScreenLine FlatProjection::polarArea(const GeoRing& unwrapped, double turn, double poleLat) const {
    const ScreenLine once = place(unwrapped);
    const Span x = spanOf<&Point::x>(once);
    const double step = turn * scale_;
    const double world = std::abs(step);
    // One copy more than needed on both sides: its far end lies outside the view.
    const double first = std::floor((-kEdgeMargin - x.greatest) / world) - 1;
    const double last = std::ceil((width_ + kEdgeMargin - x.least) / world) + 1;
    ScreenLine result;
    for (double copy = first; copy <= last; ++copy) {
        const double shift = (step > 0 ? copy : first + last - copy) * world;
        for (const Point& point : once) result.push_back({point.x + shift, point.y});
    }
    result.push_back({result.back().x, yOf(poleLat)});
    result.push_back({result.front().x, yOf(poleLat)});
    return result;
}

}  // namespace veloran
