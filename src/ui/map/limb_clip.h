#pragma once

#include "ui/map/sphere.h"

namespace veloran {

// What of the globe is seen from an eye on the z axis: the points with z of at least `limb`, which
// lies between 0 and 1. Edges are cut exactly at the limb, and long ones follow their great circle.

/// The visible pieces of an open line.
std::vector<SphereLine> visibleLine(const SphereLine& points, double limb);

/// The visible parts of the smaller side of a ring, as rings closed along the limb.
std::vector<SphereLine> visibleArea(SphereLine ring, double limb);

/// The visible part of what lies on the left of rings that do not cross each other: to be filled
/// as one shape by the even-odd rule. Without a ring that is the whole disc or nothing.
std::vector<SphereLine> visibleRegion(const std::vector<SphereLine>& rings, double limb,
                                      bool isAllWithoutRings);

}  // namespace veloran
