#include "ui/scene/mini_polar_plot.h"

#include <gtest/gtest.h>

namespace veloran {
namespace {

using scene::Disc;
using scene::Line;
using scene::Point;
using scene::Polyline;
using scene::Ring;
using scene::Scene;
using scene::Stroke;

void expectNear(Point actual, Point expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-9);
    EXPECT_NEAR(actual.y, expected.y, 1e-9);
}

PredictedPass passThrough(std::initializer_list<std::pair<double, double>> azimuthsElevations) {
    PredictedPass pass;
    for (const auto& [azimuth, elevation] : azimuthsElevations) {
        pass.trackPoints.push_back({.date = {}, .azimuth = azimuth, .elevation = elevation});
    }
    return pass;
}

TEST(PolarPoint, NorthIsUpAndEastIsRight) {
    const Point c{30, 30};
    expectNear(polarPoint(0, 0, c, 28), {30, 2});
    expectNear(polarPoint(90, 0, c, 28), {58, 30});
    expectNear(polarPoint(180, 45, c, 28), {30, 44});
    expectNear(polarPoint(270, 0, c, 28), {2, 30});
}

TEST(PolarPoint, ZenithIsTheCentreAndBelowTheHorizonIsOutside) {
    const Point c{30, 30};
    expectNear(polarPoint(123, 90, c, 28), c);
    expectNear(polarPoint(90, -90, c, 28), {86, 30});
}

TEST(MiniPolarPlot, ChartComesFirstThenTrackThenItsEnds) {
    const Scene scene = miniPolarPlotScene(passThrough({{90, 0}, {180, 90}, {270, 0}}), 60, 60);
    ASSERT_EQ(scene.size(), 6u);

    const auto& rim = std::get<Ring>(scene[0]);
    EXPECT_EQ(rim.center, (Point{30, 30}));
    EXPECT_EQ(rim.radius, 28);
    EXPECT_EQ(rim.stroke, (Stroke{Ink::gray, 0.3, 0.5}));

    const auto& vertical = std::get<Line>(scene[1]);
    EXPECT_EQ(vertical.from, (Point{30, 2}));
    EXPECT_EQ(vertical.to, (Point{30, 58}));
    EXPECT_EQ(vertical.stroke, (Stroke{Ink::gray, 0.15, 0.5}));
    const auto& horizontal = std::get<Line>(scene[2]);
    EXPECT_EQ(horizontal.from, (Point{2, 30}));
    EXPECT_EQ(horizontal.to, (Point{58, 30}));
    EXPECT_EQ(horizontal.stroke, vertical.stroke);

    const auto& track = std::get<Polyline>(scene[3]);
    ASSERT_EQ(track.points.size(), 3u);
    expectNear(track.points[0], {58, 30});
    expectNear(track.points[1], {30, 30});
    expectNear(track.points[2], {2, 30});
    EXPECT_EQ(track.stroke, (Stroke{Ink::cyan, 1, 1.5}));

    const auto& rise = std::get<Disc>(scene[4]);
    expectNear(rise.center, {58, 30});
    EXPECT_EQ(rise.radius, 2.5);
    EXPECT_EQ(rise.fill, (scene::Fill{Ink::green, 1}));
    const auto& set = std::get<Disc>(scene[5]);
    expectNear(set.center, {2, 30});
    EXPECT_EQ(set.radius, 2.5);
    EXPECT_EQ(set.fill, (scene::Fill{Ink::red, 1}));
}

TEST(MiniPolarPlot, SmallerSideDecidesTheRadius) {
    const Scene scene = miniPolarPlotScene({}, 100, 40);
    EXPECT_EQ(std::get<Ring>(scene[0]).center, (Point{50, 20}));
    EXPECT_EQ(std::get<Ring>(scene[0]).radius, 18);
}

TEST(MiniPolarPlot, SinglePointDrawsNoTrack) {
    EXPECT_EQ(miniPolarPlotScene({}, 60, 60).size(), 3u);
    EXPECT_EQ(miniPolarPlotScene(passThrough({{10, 10}}), 60, 60).size(), 3u);
}

}  // namespace
}  // namespace veloran
