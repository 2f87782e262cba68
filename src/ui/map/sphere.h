#pragma once

#include <vector>

#include "orbit/ground_geometry.h"
#include "orbit/vec3.h"

namespace veloran {

using SphereLine = std::vector<Vec3>;  ///< unit vectors, joined by the shortest great circles

inline double dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// x towards the equator at longitude 0, z towards the north pole.
Vec3 unitVector(GeoPoint point);
SphereLine unitVectors(const GeoRing& points);
/// Degrees; of a vector of any length.
GeoPoint geoPoint(const Vec3& direction);

/// All points within a distance, radians, of one.
struct SphereCap {
    Vec3 middle;
    double radius = 0;
};
/// Holds a line, though it may not be the smallest that does. What is smaller than half of the
/// sphere holds the inside of a ring as well.
SphereCap capAround(const SphereLine& points);
bool doMeet(const SphereCap& a, const SphereCap& b);

/// The signed area between a ring and the z axis, seen from outside positive counterclockwise: the
/// sum of the solid angles of the triangles from the axis to each edge (Van Oosterom and Strackee,
/// 1983). Up to a multiple of 4 pi it is the area on the left of the ring.
double areaAboutAxis(const SphereLine& ring);
bool isLeftSideSmaller(const SphereLine& ring);
/// How often a ring goes round the z axis, counterclockwise.
int turnsAboutAxis(const SphereLine& ring);

}  // namespace veloran
