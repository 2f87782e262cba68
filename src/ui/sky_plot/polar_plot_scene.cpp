#include "ui/sky_plot/polar_plot_scene.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "ui/scene/mini_polar_plot.h"
#include "ui/sky_plot/sky_plot_texts.h"

namespace veloran {

namespace {

using scene::Point;
using scene::Scene;

constexpr double kRoomForLabels = 36;  // between the horizon and the edge of the canvas
constexpr double kLabelDistance = 18;  // of the middle of a label from the horizon
constexpr double kRimDistance = 9;

struct CompassLabel {
    const char* text;
    double az;  // degrees
    int size;
    QFont::Weight weight;
    Ink color;
};

constexpr std::array<CompassLabel, 8> kCompassLabels{{
    {"N", 0, 14, QFont::Bold, Ink::red},
    {"E", 90, 14, QFont::Bold, Ink::green},
    {"S", 180, 14, QFont::Bold, Ink::yellow},
    {"W", 270, 14, QFont::Bold, Ink::cyan},
    {"NE", 45, 10, QFont::Medium, Ink::secondary},
    {"SE", 135, 10, QFont::Medium, Ink::secondary},
    {"SW", 225, 10, QFont::Medium, Ink::secondary},
    {"NW", 315, 10, QFont::Medium, Ink::secondary},
}};

constexpr std::array<int, 16> kLabelledDegrees{15,  30,  60,  75,  105, 120, 150, 165,
                                               195, 210, 240, 255, 285, 300, 330, 345};

/// The point at a distance from the centre, in the direction of an azimuth.
Point outward(const SkyDisk& disk, double azimuth, double distance) {
    return polarPoint(azimuth, 0, disk.center, distance);
}

void drawElevationRings(Scene& onto, const SkyDisk& disk) {
    for (int elevation = 0; elevation <= 75; elevation += 15) {
        const double radius = disk.radius * (1 - elevation / 90.0);
        const bool isMain = elevation % 30 == 0;
        onto.push_back(scene::Ring{
            disk.center, radius,
            isMain ? scene::Stroke{Ink::gray, 0.35, 0.6} : scene::Stroke{Ink::gray, 0.2, 0.4}});
    }
    for (const int elevation : {30, 60}) {
        const double radius = disk.radius * (1 - elevation / 90.0);
        onto.push_back(scene::Text{.at = {disk.center.x + 4, disk.center.y - radius + 6},
                                   .text = fmt::format("{}°", elevation),
                                   .fill = {Ink::gray},
                                   .pixels = 8,
                                   .anchor = scene::Anchor::leading});
    }
}

void drawCrossHair(Scene& onto, const SkyDisk& disk) {
    for (const double azimuth : {0.0, 90.0}) {
        onto.push_back(scene::Line{outward(disk, azimuth, -disk.radius),
                                   outward(disk, azimuth, disk.radius),
                                   {Ink::gray, 0.18, 0.5}});
    }
}

void drawTicks(Scene& onto, const SkyDisk& disk) {
    struct Tick {
        double length, opacity, width;
    };
    for (int degree = 0; degree < 360; ++degree) {
        const Tick tick = degree % 15 == 0  ? Tick{8, 0.75, 0.9}
                          : degree % 5 == 0 ? Tick{4, 0.45, 0.6}
                                            : Tick{2, 0.22, 0.4};
        onto.push_back(scene::Line{outward(disk, degree, disk.radius),
                                   outward(disk, degree, disk.radius + tick.length),
                                   {Ink::gray, tick.opacity, tick.width}});
    }
}

void drawRimLabels(Scene& onto, const SkyDisk& disk) {
    const double radius = disk.radius + kLabelDistance;
    constexpr double kLeastSpacing = 16;  // three digits and a gap
    const double spacing = radius * 15 * std::numbers::pi / 180;
    if (spacing >= kLeastSpacing) {
        for (const int degree : kLabelledDegrees) {
            onto.push_back(scene::Text{.at = outward(disk, degree, radius),
                                       .text = degreeLabel(degree),
                                       .fill = {Ink::gray},
                                       .pixels = 8});
        }
    }
    for (const CompassLabel& label : kCompassLabels) {
        onto.push_back(scene::Text{.at = outward(disk, label.az, radius),
                                   .text = label.text,
                                   .fill = {label.color},
                                   .pixels = label.size,
                                   .weight = label.weight,
                                   .mono = false});
    }
}

void drawMotionArrow(Scene& onto, Point at, Point motion) {
    const Point base{at.x + 14 * motion.x, at.y + 14 * motion.y};
    const auto corner = [&](double ahead, double aside) {
        return Point{base.x + ahead * motion.x - aside * motion.y,
                     base.y + ahead * motion.y + aside * motion.x};
    };
    const std::vector<Point> triangle{corner(6, 0), corner(-2, 4), corner(-2, -4)};
    onto.push_back(scene::Polygon{triangle, {Ink::green}});
    onto.push_back(scene::Polyline{{triangle[0], triangle[1], triangle[2], triangle[0]},
                                   {RgbColor{1, 1, 1}, 0.9, 0.6}});
}

}  // namespace

SkyDisk skyDisk(double width, double height) {
    return {{width / 2, height / 2}, std::min(width, height) / 2 - kRoomForLabels};
}

Scene skyChartScene(const SkyDisk& disk) {
    Scene scene;
    scene.push_back(scene::Disc{disk.center, disk.radius, {Ink::control}});
    drawElevationRings(scene, disk);
    drawCrossHair(scene, disk);
    scene.push_back(scene::Ring{disk.center, disk.radius + kRimDistance, {Ink::gray, 0.35, 0.5}});
    drawTicks(scene, disk);
    drawRimLabels(scene, disk);
    return scene;
}

void drawPassTrack(Scene& onto, const SkyDisk& disk, const PredictedPass& pass) {
    std::vector<Point> track;
    Point highest;
    double greatest = -std::numeric_limits<double>::infinity();
    for (const PassPoint& p : pass.trackPoints) {
        const Point at = polarPoint(p.azimuth, p.elevation, disk.center, disk.radius);
        if (!std::isfinite(at.x) || !std::isfinite(at.y)) continue;
        track.push_back(at);
        if (p.elevation > greatest) {
            greatest = p.elevation;
            highest = at;
        }
    }
    if (track.size() < 2) return;
    const Point rise = track.front();
    const Point set = track.back();
    onto.push_back(scene::Polyline{std::move(track), {Ink::cyan, 1, 2}});
    onto.push_back(scene::Disc{rise, 4, {Ink::green}});
    onto.push_back(scene::Disc{set, 4, {Ink::red}});
    onto.push_back(scene::Ring{highest, 5, {Ink::yellow, 1, 1.5}});
}

std::optional<Point> motionVector(Point from, Point to) {
    const double distance = std::hypot(to.x - from.x, to.y - from.y);
    if (!(distance > 0.5)) return std::nullopt;
    return Point{(to.x - from.x) / distance, (to.y - from.y) / distance};
}

void drawSatelliteBeacon(Scene& onto, Point at, Instant time, const std::optional<Point>& motion) {
    constexpr double kCycleSeconds = 1.6;
    double t = std::fmod(time.unixSeconds(), kCycleSeconds) / kCycleSeconds;
    if (t < 0) t += 1;  // before 1970
    for (int i = 0; i < 3; ++i) {
        double p = t + i / 3.0;
        if (p >= 1) p -= 1;
        const double easedOut = 1 - std::pow(1 - p, 1.6);
        onto.push_back(scene::Ring{at, 5 + easedOut * 17, {Ink::green, 0.55 * (1 - p), 1.2}});
    }
    const double pulse = 0.5 + 0.5 * std::sin(2 * std::numbers::pi * t);
    onto.push_back(scene::Disc{at, 7 + 3 * pulse, {Ink::green, 0.22 + 0.13 * pulse}});
    onto.push_back(scene::Disc{at, 4, {Ink::green}});
    if (motion) drawMotionArrow(onto, at, *motion);
}

Scene liveSkyScene(const SkyDisk& disk, const LiveSky& live) {
    Scene scene;
    if (!(live.now.elevation > 0)) return scene;
    const Point at = polarPoint(live.now.azimuth, live.now.elevation, disk.center, disk.radius);
    if (live.bearingLine) {
        scene.push_back(scene::Line{
            disk.center, outward(disk, live.now.azimuth, disk.radius), {Ink::green, 0.35, 1.2}});
    }
    std::optional<Point> motion;
    if (live.ahead && live.ahead->elevation > 0) {
        motion = motionVector(
            at, polarPoint(live.ahead->azimuth, live.ahead->elevation, disk.center, disk.radius));
    }
    drawSatelliteBeacon(scene, at, live.time, motion);
    return scene;
}

}  // namespace veloran
