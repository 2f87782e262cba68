#include "ui/sky_plot/polar_plot_scene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "ui/scene/mini_polar_plot.h"
#include "ui/ui_fixture.h"

namespace veloran::test {
namespace {

using scene::Disc;
using scene::Line;
using scene::Point;
using scene::Polygon;
using scene::Polyline;
using scene::Ring;
using scene::Scene;
using scene::Stroke;
using scene::Text;

const SkyDisk kDisk = skyDisk(280, 280);

void expectNear(Point actual, Point expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-9);
    EXPECT_NEAR(actual.y, expected.y, 1e-9);
}

double distance(Point a, Point b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

template <class Shape>
std::vector<Shape> all(const Scene& scene) {
    std::vector<Shape> found;
    for (const auto& shape : scene) {
        if (const auto* s = std::get_if<Shape>(&shape)) found.push_back(*s);
    }
    return found;
}

TEST(SkyDiskPlace, LeavesRoomForTheLabels) {
    EXPECT_EQ(skyDisk(280, 280), (SkyDisk{{140, 140}, 104}));
    EXPECT_EQ(skyDisk(400, 200), (SkyDisk{{200, 100}, 64}));
}

TEST(SkyChart, GroundComesFirstThenSixRings) {
    const Scene scene = skyChartScene(kDisk);
    const auto& ground = std::get<Disc>(scene[0]);
    EXPECT_EQ(ground.center, kDisk.center);
    EXPECT_EQ(ground.radius, 104);
    EXPECT_EQ(ground.fill, (scene::Fill{Ink::control, 1}));
    for (int i = 0; i < 6; ++i) {
        const auto& ring = std::get<Ring>(scene[static_cast<std::size_t>(1 + i)]);
        EXPECT_EQ(ring.center, kDisk.center);
        EXPECT_DOUBLE_EQ(ring.radius, 104 * (1 - i * 15 / 90.0));
        EXPECT_EQ(ring.stroke,
                  i % 2 == 0 ? (Stroke{Ink::gray, 0.35, 0.6}) : (Stroke{Ink::gray, 0.2, 0.4}));
    }
}

TEST(SkyChart, ThirtyAndSixtyDegreesAreLabelledBesideTheirRings) {
    const Scene scene = skyChartScene(kDisk);
    for (const int i : {0, 1}) {
        const auto& label = std::get<Text>(scene[static_cast<std::size_t>(7 + i)]);
        EXPECT_EQ(label.text, i == 0 ? "30°" : "60°");
        EXPECT_EQ(label.pixels, 8);
        EXPECT_TRUE(label.mono);
        EXPECT_EQ(label.fill, (scene::Fill{Ink::gray, 1}));
        EXPECT_EQ(label.anchor, scene::Anchor::leading);
        const double radius = 104 * (1 - (i + 1) * 30 / 90.0);
        expectNear(label.at, {144, 140 - radius + 6});
    }
}

TEST(SkyChart, CrossHairThenOuterRing) {
    const Scene scene = skyChartScene(kDisk);
    const auto& vertical = std::get<Line>(scene[9]);
    expectNear(vertical.from, {140, 244});
    expectNear(vertical.to, {140, 36});
    EXPECT_EQ(vertical.stroke, (Stroke{Ink::gray, 0.18, 0.5}));
    const auto& horizontal = std::get<Line>(scene[10]);
    expectNear(horizontal.from, {36, 140});
    expectNear(horizontal.to, {244, 140});
    EXPECT_EQ(horizontal.stroke, vertical.stroke);
    const auto& outer = std::get<Ring>(scene[11]);
    EXPECT_EQ(outer.radius, 113);
    EXPECT_EQ(outer.stroke, (Stroke{Ink::gray, 0.35, 0.5}));
}

TEST(SkyChart, TickForEveryDegreeOutwardsFromTheHorizon) {
    const Scene scene = skyChartScene(kDisk);
    for (int d = 0; d < 360; ++d) {
        const auto& tick = std::get<Line>(scene[static_cast<std::size_t>(12 + d)]);
        const double length = d % 15 == 0 ? 8 : d % 5 == 0 ? 4 : 2;
        expectNear(tick.from, polarPoint(d, 0, kDisk.center, 104));
        expectNear(tick.to, polarPoint(d, 0, kDisk.center, 104 + length));
        const Stroke stroke = d % 15 == 0  ? Stroke{Ink::gray, 0.75, 0.9}
                              : d % 5 == 0 ? Stroke{Ink::gray, 0.45, 0.6}
                                           : Stroke{Ink::gray, 0.22, 0.4};
        EXPECT_EQ(tick.stroke, stroke) << d;
    }
}

TEST(SkyChart, SixteenDegreeLabelsRoundTheRim) {
    const Scene scene = skyChartScene(kDisk);
    const std::vector<int> degrees{15,  30,  60,  75,  105, 120, 150, 165,
                                   195, 210, 240, 255, 285, 300, 330, 345};
    for (std::size_t i = 0; i < degrees.size(); ++i) {
        const auto& label = std::get<Text>(scene[372 + i]);
        EXPECT_EQ(std::stoi(label.text), degrees[i]);
        EXPECT_EQ(label.text.size(), 3u);
        EXPECT_EQ(label.pixels, 8);
        EXPECT_EQ(label.weight, QFont::Normal);
        EXPECT_TRUE(label.mono);
        EXPECT_EQ(label.anchor, scene::Anchor::center);
        EXPECT_EQ(label.fill, (scene::Fill{Ink::gray, 1}));
        expectNear(label.at, polarPoint(degrees[i], 0, kDisk.center, 122));
    }
}

TEST(SkyChart, CompassLabelsComeLast) {
    struct Label {
        const char* text;
        double azimuth;
        int size;
        QFont::Weight weight;
        Ink ink;
    };
    const std::vector<Label> labels{{"N", 0, 14, QFont::Bold, Ink::red},
                                    {"E", 90, 14, QFont::Bold, Ink::green},
                                    {"S", 180, 14, QFont::Bold, Ink::yellow},
                                    {"W", 270, 14, QFont::Bold, Ink::cyan},
                                    {"NE", 45, 10, QFont::Medium, Ink::secondary},
                                    {"SE", 135, 10, QFont::Medium, Ink::secondary},
                                    {"SW", 225, 10, QFont::Medium, Ink::secondary},
                                    {"NW", 315, 10, QFont::Medium, Ink::secondary}};
    const Scene scene = skyChartScene(kDisk);
    ASSERT_EQ(scene.size(), 396u);
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const auto& label = std::get<Text>(scene[388 + i]);
        EXPECT_EQ(label.text, labels[i].text);
        EXPECT_EQ(label.pixels, labels[i].size);
        EXPECT_EQ(label.weight, labels[i].weight);
        EXPECT_EQ(label.fill, (scene::Fill{labels[i].ink, 1}));
        EXPECT_FALSE(label.mono);
        expectNear(label.at, polarPoint(labels[i].azimuth, 0, kDisk.center, 122));
    }
}

TEST(SkyChart, NumbersRoundTheRimAreLeftOutWhereTheyWouldTouch) {
    EXPECT_EQ(all<Text>(skyChartScene(skyDisk(200, 200))).size(), 2u + 16 + 8);
    EXPECT_EQ(all<Text>(skyChartScene(skyDisk(160, 160))).size(), 2u + 16 + 8);
    EXPECT_EQ(all<Text>(skyChartScene(skyDisk(140, 140))).size(), 2u + 8);
}

TEST(PassTrack, PathThenItsEndsThenItsTop) {
    Scene scene;
    const PredictedPass pass = passAt(Instant{0}, 600, 45, 21);
    drawPassTrack(scene, kDisk, pass);
    ASSERT_EQ(scene.size(), 4u);
    const auto& path = std::get<Polyline>(scene[0]);
    EXPECT_EQ(path.stroke, (Stroke{Ink::cyan, 1, 2}));
    ASSERT_EQ(path.points.size(), 21u);
    for (std::size_t i = 0; i < 21; ++i) {
        const PassPoint& p = pass.trackPoints[i];
        expectNear(path.points[i], polarPoint(p.azimuth, p.elevation, kDisk.center, 104));
    }
    const auto& rise = std::get<Disc>(scene[1]);
    expectNear(rise.center, {244, 140});
    EXPECT_EQ(rise.radius, 4);
    EXPECT_EQ(rise.fill, (scene::Fill{Ink::green, 1}));
    const auto& set = std::get<Disc>(scene[2]);
    expectNear(set.center, {36, 140});
    EXPECT_EQ(set.radius, 4);
    EXPECT_EQ(set.fill, (scene::Fill{Ink::red, 1}));
    const auto& top = std::get<Ring>(scene[3]);
    expectNear(top.center, {140, 192});
    EXPECT_EQ(top.radius, 5);
    EXPECT_EQ(top.stroke, (Stroke{Ink::yellow, 1, 1.5}));
}

TEST(PassTrack, SinglePointDrawsNothing) {
    Scene scene;
    drawPassTrack(scene, kDisk, passAt(Instant{0}, 600, 45, 1));
    drawPassTrack(scene, kDisk, passAt(Instant{0}, 600, 45, 0));
    EXPECT_TRUE(scene.empty());
}

TEST(PassTrack, PointWithoutAnElevationIsPassedOver) {
    Scene scene;
    PredictedPass pass = passAt(Instant{0}, 600, 89, 21);
    pass.trackPoints[10].elevation = std::numeric_limits<double>::quiet_NaN();
    drawPassTrack(scene, kDisk, pass);
    ASSERT_EQ(scene.size(), 4u);
    EXPECT_EQ(std::get<Polyline>(scene[0]).points.size(), 20u);
    EXPECT_TRUE(std::isfinite(std::get<Ring>(scene[3]).center.x));
}

TEST(Motion, NoneWithinHalfAPoint) {
    EXPECT_EQ(motionVector({0, 0}, {0.5, 0}), std::nullopt);
    EXPECT_EQ(motionVector({0, 0}, {0, 0}), std::nullopt);
    ASSERT_TRUE(motionVector({0, 0}, {0.51, 0}));
    expectNear(*motionVector({1, 1}, {4, 5}), {0.6, 0.8});
}

Scene beacon(double unixSeconds, std::optional<Point> motion = {}) {
    Scene scene;
    drawSatelliteBeacon(scene, {100, 50}, Instant::fromUnixSeconds(unixSeconds), motion);
    return scene;
}

void expectRing(const Scene& scene, std::size_t index, double p) {
    const auto& ring = std::get<Ring>(scene[index]);
    EXPECT_EQ(ring.center, (Point{100, 50}));
    EXPECT_NEAR(ring.radius, 5 + 17 * (1 - std::pow(1 - p, 1.6)), 1e-6);
    EXPECT_NEAR(ring.stroke.opacity, 0.55 * (1 - p), 1e-6);
    EXPECT_EQ(ring.stroke.width, 1.2);
    EXPECT_EQ(ring.stroke.paint, Paint(Ink::green));
}

TEST(Beacon, RingsExpandAThirdOfACycleApart) {
    const Scene atRest = beacon(0);
    ASSERT_EQ(atRest.size(), 5u);
    expectRing(atRest, 0, 0);
    expectRing(atRest, 1, 1 / 3.0);
    expectRing(atRest, 2, 2 / 3.0);
    const Scene half = beacon(0.8);
    expectRing(half, 0, 0.5);
    expectRing(half, 1, 0.5 + 1 / 3.0);
    expectRing(half, 2, 0.5 + 2 / 3.0 - 1);
}

TEST(Beacon, HaloBreathesRoundAStillCore) {
    for (const auto& [t, pulse] : {std::pair{0.0, 0.5}, {0.25, 1.0}, {0.75, 0.0}}) {
        const Scene scene = beacon(1.6 * t);
        const auto& halo = std::get<Disc>(scene[3]);
        EXPECT_NEAR(halo.radius, 7 + 3 * pulse, 1e-6);
        EXPECT_NEAR(halo.fill.opacity, 0.22 + 0.13 * pulse, 1e-6);
        const auto& core = std::get<Disc>(scene[4]);
        EXPECT_EQ(core.radius, 4);
        EXPECT_EQ(core.fill, (scene::Fill{Ink::green, 1}));
    }
}

TEST(Beacon, IsAFunctionOfAbsoluteTimeAlsoBefore1970) {
    expectRing(beacon(1.7e9), 0, std::fmod(1.7e9, 1.6) / 1.6);
    expectRing(beacon(-0.4), 0, 0.75);
}

TEST(Beacon, ArrowAheadOfTheCoreHasAWhiteEdge) {
    const Scene scene = beacon(0, Point{0, -1});  // moving up
    ASSERT_EQ(scene.size(), 7u);
    const auto& arrow = std::get<Polygon>(scene[5]);
    EXPECT_EQ(arrow.fill, (scene::Fill{Ink::green, 1}));
    ASSERT_EQ(arrow.points.size(), 3u);
    expectNear(arrow.points[0], {100, 30});
    expectNear(arrow.points[1], {104, 38});
    expectNear(arrow.points[2], {96, 38});
    const auto& edge = std::get<Polyline>(scene[6]);
    EXPECT_EQ(edge.points,
              (std::vector{arrow.points[0], arrow.points[1], arrow.points[2], arrow.points[0]}));
    EXPECT_EQ(edge.stroke, (Stroke{RgbColor{1, 1, 1}, 0.9, 0.6}));
}

TEST(Beacon, StaysWithinItsReach) {
    for (double t = 0; t < 1.6; t += 0.05) {
        for (double a = 0; a < 6.28; a += 0.1) {
            const Scene scene = beacon(t, Point{std::cos(a), std::sin(a)});
            for (const Ring& ring : all<Ring>(scene)) {
                EXPECT_LT(ring.radius + ring.stroke.width, kBeaconReach);
            }
            const Polygon arrow = all<Polygon>(scene).at(0);
            for (const Point& corner : arrow.points) {
                EXPECT_LT(distance(corner, {100, 50}) + 1, kBeaconReach);
            }
        }
    }
}

LiveSky live(double azimuth, double elevation) {
    return {.time = Instant::fromUnixSeconds(0),
            .now = {.azimuth = azimuth, .elevation = elevation},
            .ahead = TopocentricResult{.azimuth = azimuth, .elevation = elevation + 5},
            .bearingLine = true};
}

TEST(LiveLayer, BearingLineRunsToTheRimUnderTheBeaconWhateverTheElevation) {
    for (const double elevation : {1.0, 45.0, 84.0}) {
        const Scene scene = liveSkyScene(kDisk, live(90, elevation));
        const auto& line = std::get<Line>(scene.at(0));
        expectNear(line.from, {140, 140});
        expectNear(line.to, {244, 140});
        EXPECT_EQ(line.stroke, (Stroke{Ink::green, 0.35, 1.2}));
        expectNear(std::get<Ring>(scene.at(1)).center, polarPoint(90, elevation, {140, 140}, 104));
    }
}

TEST(LiveLayer, NoBearingLineUnlessWanted) {
    LiveSky sky = live(90, 45);
    sky.bearingLine = false;
    EXPECT_TRUE(all<Line>(liveSkyScene(kDisk, sky)).empty());
}

TEST(LiveLayer, NothingAtOrBelowTheHorizon) {
    EXPECT_TRUE(liveSkyScene(kDisk, live(90, 0)).empty());
    EXPECT_TRUE(liveSkyScene(kDisk, live(90, -10)).empty());
    EXPECT_TRUE(liveSkyScene(kDisk, live(90, std::numeric_limits<double>::quiet_NaN())).empty());
    EXPECT_FALSE(liveSkyScene(kDisk, live(90, 0.001)).empty());
}

TEST(LiveLayer, ArrowPointsWhereTheSatelliteGoes) {
    const Scene scene = liveSkyScene(kDisk, live(90, 45));  // rising: towards the centre
    const auto arrow = all<Polygon>(scene).at(0);
    expectNear(arrow.points[0], {192 - 20, 140});
}

TEST(LiveLayer, NoArrowWhenItHardlyMovesOrGoesBelowTheHorizon) {
    LiveSky sky = live(90, 45);
    sky.ahead->elevation = 45.4;  // 0.46 points
    EXPECT_TRUE(all<Polygon>(liveSkyScene(kDisk, sky)).empty());
    sky.ahead->elevation = 45.5;  // 0.58 points
    EXPECT_FALSE(all<Polygon>(liveSkyScene(kDisk, sky)).empty());
    sky.ahead.reset();
    EXPECT_TRUE(all<Polygon>(liveSkyScene(kDisk, sky)).empty());
    sky = live(90, 0.5);
    sky.ahead = TopocentricResult{.azimuth = 120, .elevation = 0};
    EXPECT_TRUE(all<Polygon>(liveSkyScene(kDisk, sky)).empty());
}

}  // namespace
}  // namespace veloran::test
