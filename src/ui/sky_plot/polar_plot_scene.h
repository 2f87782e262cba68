#pragma once

#include <optional>

#include "base/instant.h"
#include "orbit/look_angles.h"
#include "orbit/pass_predictor.h"
#include "ui/scene/scene.h"

namespace veloran {

// The sky above the observer as a disk: azimuth round the rim, the horizon on the rim and the
// zenith in the centre (see polarPoint). Logical pixels.

/// The circle of the horizon.
struct SkyDisk {
    scene::Point center;
    double radius = 0;
    bool operator==(const SkyDisk&) const = default;
};

/// The greatest disk with its labels in a canvas of this size.
SkyDisk skyDisk(double width, double height);

/// Rings, cross-hair, rim and labels: what stays as long as the size does. On a disk too small for
/// the numbers round the rim only the points of the compass are labelled.
scene::Scene skyChartScene(const SkyDisk& disk);

/// The track of a pass with marks at its first, last and highest point. Points whose place is not
/// finite are passed over; nothing is drawn with fewer than two.
void drawPassTrack(scene::Scene& onto, const SkyDisk& disk, const PredictedPass& pass);

/// From where a body is to where it will be, as a vector of length 1; absent when these are within
/// half a point.
std::optional<scene::Point> motionVector(scene::Point from, scene::Point to);

/// A pulsing mark, with an arrow ahead of it when there is a motion. A function of absolute time: a
/// cycle takes 1.6 seconds.
void drawSatelliteBeacon(scene::Scene& onto, scene::Point at, Instant time,
                         const std::optional<scene::Point>& motion);

/// All of a beacon lies within this distance of its place.
inline constexpr double kBeaconReach = 24;

/// Where a body is, and where it will be `kMotionSeconds` later.
struct LiveSky {
    Instant time;
    TopocentricResult now;
    std::optional<TopocentricResult> ahead;
    bool bearingLine = false;
};
inline constexpr double kMotionSeconds = 2;

/// What moves: the beacon, and the bearing line under it. Empty unless the body is above the
/// horizon.
scene::Scene liveSkyScene(const SkyDisk& disk, const LiveSky& live);

}  // namespace veloran
