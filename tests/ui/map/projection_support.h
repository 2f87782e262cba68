#pragma once

#include <cmath>
#include <vector>

#include "ui/map/map_projection.h"

namespace veloran::test {

/// Whether a point lies inside any of these shapes, filled by the even-odd rule.
inline bool isFilled(const std::vector<ScreenLine>& shapes, scene::Point at) {
    bool isInside = false;
    for (const ScreenLine& shape : shapes) {
        for (std::size_t i = 0; i < shape.size(); ++i) {
            const scene::Point& a = shape[i];
            const scene::Point& b = shape[(i + 1) % shape.size()];
            if ((a.y > at.y) == (b.y > at.y)) continue;
            if (at.x < a.x + (at.y - a.y) / (b.y - a.y) * (b.x - a.x)) isInside = !isInside;
        }
    }
    return isInside;
}

inline double distance(scene::Point a, scene::Point b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

/// The circle of a satellite's reach about a point.
inline GeoRing footprint(double lat, double lon, double altitudeKm) {
    return footprintPolygon({lat, lon, altitudeKm}, 72);
}

}  // namespace veloran::test
