#include "ui/timeline/timeline_scene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "../ui_fixture.h"
#include "ui/timeline/timeline_texts.h"
#include "ui/timeline/timeline_ticks.h"

namespace veloran::test {
namespace {

using scene::Anchor;
using scene::Line;
using scene::Point;
using scene::Polygon;
using scene::Polyline;
using scene::Scene;
using scene::Stroke;
using scene::Text;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kHour = 3600;

const Instant kStart{789304410};  // Jan 5 2026 11:13:30 UTC

/// 100 points an hour, two points a degree.
const TimelineFrame kFrame{.start = kStart, .hours = 10, .width = 1000, .height = 196};

template <class Shape>
std::vector<Shape> shapesOf(const Scene& scene) {
    std::vector<Shape> found;
    for (const auto& shape : scene) {
        if (const auto* s = std::get_if<Shape>(&shape)) found.push_back(*s);
    }
    return found;
}

/// From 11 to 12 o'clock on the frame, to 45 degrees.
PredictedPass anHour(double hoursIn = 1, double maxElevation = 45) {
    return passAt(kStart + hoursIn * kHour, kHour, maxElevation, 3);
}

SatellitePtr bodyWith(std::int64_t id, PassList passes, const std::string& name = "RS-44") {
    auto body = std::make_shared<Satellite>(name, id);
    body->passes = std::make_shared<const PassList>(std::move(passes));
    return body;
}

TEST(TimelineFrame, MapsTimeToWidthAndElevationToHeight) {
    EXPECT_EQ(kFrame.x(kStart), 0);
    EXPECT_EQ(kFrame.x(kStart + 5 * kHour), 500);
    EXPECT_EQ(kFrame.x(kStart - kHour), -100);
    EXPECT_EQ(kFrame.y(90), 8);
    EXPECT_EQ(kFrame.y(45), 98);
    EXPECT_EQ(kFrame.y(0), 188);
    EXPECT_EQ(kFrame.horizon(), 188);
}

TEST(TimeHeader, TicksEndAtTheBottomAndMajorOnesCarryTheTime) {
    const Scene scene = timeHeaderScene(kFrame, 8);
    const auto lines = shapesOf<Line>(scene);
    ASSERT_EQ(lines.size(), timelineTicks(10, 1000).size());
    EXPECT_EQ(lines[0].from, (Point{0, 22}));
    EXPECT_EQ(lines[0].to, (Point{0, 28}));
    EXPECT_EQ(lines[0].stroke, (Stroke{Ink::gray, 0.5, 1}));
    EXPECT_EQ(lines[1].from.y, 26);
    EXPECT_EQ(lines[1].stroke, (Stroke{Ink::gray, 0.18, 0.5}));
    EXPECT_EQ(lines[6].from.y, 24) << "the half hour";
    EXPECT_EQ(lines[6].stroke, (Stroke{Ink::gray, 0.32, 0.7}));

    const auto labels = shapesOf<Text>(scene);
    ASSERT_EQ(labels.size(), 11u);
    EXPECT_EQ(labels[0].text, "11:13") << "ticks count from the left edge";
    EXPECT_EQ(labels[1].text, "12:13");
    EXPECT_EQ(labels[1].at, (Point{100, 14}));
    EXPECT_EQ(labels[1].pixels, 14);
    EXPECT_EQ(labels[1].weight, QFont::Medium);
    EXPECT_EQ(labels[1].anchor, Anchor::center);
    EXPECT_EQ(labels[1].fill, (scene::Fill{Ink::secondary}));
    EXPECT_TRUE(labels[1].mono);
}

TEST(TimeHeader, LabelsThatWouldTouchAreLeftOutAndTicksStay) {
    TimelineFrame narrow = kFrame;
    narrow.width = 400;  // 40 points an hour; a label takes 40 and a gap
    const Scene scene = timeHeaderScene(narrow, 8);
    const auto labels = shapesOf<Text>(scene);
    ASSERT_GE(labels.size(), 2u);
    EXPECT_EQ(labels[1].text, "13:13") << "every second";
    EXPECT_EQ(shapesOf<Line>(scene).size(), timelineTicks(10, 400).size());
    for (std::size_t i = 1; i < labels.size(); ++i) {
        EXPECT_GE(labels[i].at.x - labels[i - 1].at.x, 46) << i;
    }
}

TEST(TimeHeader, SpanBeyondADayShowsDates) {
    TimelineFrame longer = kFrame;
    longer.hours = 48;
    const auto labels = shapesOf<Text>(timeHeaderScene(longer, 8));
    EXPECT_EQ(labels[0].text, "Jan 5 11:13");
    EXPECT_EQ(labels[1].text, "Jan 5 19:13") << "83 points between majors, 94 to a label";
}

TEST(TimeHeader, NoWidthBreaksNothing) {
    TimelineFrame none = kFrame;
    none.width = 0;
    EXPECT_FALSE(timeHeaderScene(none, 8).empty());
    none.hours = 0;
    EXPECT_TRUE(timeHeaderScene(none, 8).empty());
}

TEST(ElevationScale, EveryTenDegreesFromTheHorizonUp) {
    const auto labels = shapesOf<Text>(elevationScaleScene(196));
    ASSERT_EQ(labels.size(), 10u);
    for (std::size_t i = 0; i < labels.size(); ++i) {
        EXPECT_EQ(labels[i].text, std::to_string(10 * i) + "°");
        EXPECT_EQ(labels[i].at.x, 28);
        EXPECT_NEAR(labels[i].at.y, 188 - 20.0 * static_cast<double>(i), 1e-9);
        EXPECT_EQ(labels[i].anchor, Anchor::trailing);
        EXPECT_EQ(labels[i].fill, (scene::Fill{Ink::gray, 0.7}));
        EXPECT_EQ(labels[i].pixels, 15);
        EXPECT_EQ(labels[i].weight, QFont::Medium);
    }
}

TEST(ElevationScale, LowScaleLeavesOutWhatWouldTouch) {
    EXPECT_EQ(shapesOf<Text>(elevationScaleScene(120)).size(), 4u) << "0, 30, 60, 90";
    EXPECT_EQ(shapesOf<Text>(elevationScaleScene(40)).size(), 2u) << "0, 90";
}

TEST(TimelineGrid, TimesThenElevationsThenHorizonThenThreshold) {
    const Scene scene = timelineGridScene(kFrame, 30);
    const auto lines = shapesOf<Line>(scene);
    const std::size_t ticks = timelineTicks(10, 1000).size();
    ASSERT_EQ(lines.size(), ticks + 10 + 1 + 1);
    EXPECT_EQ(lines[0].from, (Point{0, 0}));
    EXPECT_EQ(lines[0].to, (Point{0, 196}));
    EXPECT_EQ(lines[0].stroke, (Stroke{Ink::gray, 0.1, 0.5}));
    EXPECT_EQ(lines[1].stroke, (Stroke{Ink::gray, 0.035, 0.35}));
    EXPECT_EQ(lines[6].stroke, (Stroke{Ink::gray, 0.06, 0.4}));

    EXPECT_EQ(lines[ticks].from, (Point{0, 188}));
    EXPECT_EQ(lines[ticks].to, (Point{1000, 188}));
    EXPECT_EQ(lines[ticks].stroke, (Stroke{Ink::gray, 0.08, 0.5}));
    EXPECT_EQ(lines[ticks + 9].from.y, 8);
    EXPECT_EQ(lines[ticks + 10].from, (Point{0, 188}));
    EXPECT_EQ(lines[ticks + 10].stroke, (Stroke{Ink::gray, 0.2, 1}));

    const Line& threshold = lines.back();
    EXPECT_EQ(threshold.from, (Point{0, 128}));
    EXPECT_EQ(threshold.to, (Point{1000, 128}));
    EXPECT_EQ(threshold.stroke, (Stroke{Ink::orange, 0.45, 1, 5, 4}));
    const auto& text = std::get<Text>(scene.back());
    EXPECT_EQ(text.text, "AUTO ≥ 30°");
    EXPECT_EQ(text.at, (Point{994, 120}));
    EXPECT_EQ(text.anchor, Anchor::trailing);
    EXPECT_EQ(text.pixels, 10);
    EXPECT_EQ(text.weight, QFont::Bold);
    EXPECT_EQ(text.fill, (scene::Fill{Ink::orange, 0.85}));
}

TEST(TimelineGrid, ThresholdOfHalfADegreeOrLessIsNotDrawn) {
    EXPECT_TRUE(shapesOf<Text>(timelineGridScene(kFrame, 0.5)).empty());
    EXPECT_TRUE(shapesOf<Text>(timelineGridScene(kFrame, -3)).empty());
    EXPECT_EQ(shapesOf<Text>(timelineGridScene(kFrame, 0.51)).size(), 1u);
}

TEST(TimelineGrid, ThresholdAboveThePictureIsNotDrawn) {
    for (const double degrees : {95.0, 1e300, kInfinity, kNone}) {
        EXPECT_TRUE(shapesOf<Text>(timelineGridScene(kFrame, degrees)).empty()) << degrees;
    }
    EXPECT_EQ(shapesOf<Text>(timelineGridScene(kFrame, 90)).size(), 1u);
}

TEST(SmoothPass, ArchOverItsTrackWithItsName) {
    const auto body = bodyWith(25544, {});
    const RgbColor color = SatelliteColorPalette::color(25544);
    const Scene scene = smoothPassScene(kFrame, *body, anHour(), ArchState::plain);
    ASSERT_EQ(scene.size(), 3u);
    const auto& fill = std::get<Polygon>(scene[0]);
    ASSERT_EQ(fill.points.size(), 5u);
    EXPECT_EQ(fill.points[0], (Point{100, 188}));
    EXPECT_EQ(fill.points[1], (Point{100, 188}));
    EXPECT_NEAR(fill.points[2].x, 150, 1e-9);
    EXPECT_NEAR(fill.points[2].y, 98, 1e-9);
    EXPECT_EQ(fill.points[4], (Point{200, 188}));
    EXPECT_EQ(fill.fill, (scene::Fill{color, 0.18 + 0.28 * 0.5}));
    const auto& stroke = std::get<Polyline>(scene[1]);
    EXPECT_EQ(stroke.points, fill.points) << "left open";
    EXPECT_EQ(stroke.stroke, (Stroke{color, 0.5 + 0.4 * 0.5, 1}));
    const auto& name = std::get<Text>(scene[2]);
    EXPECT_EQ(name.text, "RS-44");
    EXPECT_EQ(name.at, (Point{150, 86}));
    EXPECT_EQ(name.fill, (scene::Fill{color}));
    EXPECT_EQ(name.pixels, 9);
    EXPECT_EQ(name.weight, QFont::Bold);
    EXPECT_EQ(name.anchor, Anchor::center);
}

TEST(SmoothPass, SelectedPassHasTwoMoreStrokes) {
    const auto body = bodyWith(25544, {});
    const Scene scene = smoothPassScene(kFrame, *body, anHour(), ArchState::selected);
    EXPECT_EQ(std::get<Polygon>(scene[0]).fill.opacity, 0.55);
    const auto strokes = shapesOf<Polyline>(scene);
    ASSERT_EQ(strokes.size(), 3u);
    EXPECT_EQ(strokes[0].stroke.width, 2);
    EXPECT_EQ(strokes[1].stroke, (Stroke{RgbColor{1, 1, 1}, 0.5, 3}));
    EXPECT_EQ(strokes[2].stroke, (Stroke{SatelliteColorPalette::color(25544), 1, 1.5}));
}

TEST(SmoothPass, HoveredPassIsFullerAndThicker) {
    const auto body = bodyWith(25544, {});
    const Scene scene = smoothPassScene(kFrame, *body, anHour(), ArchState::hovered);
    EXPECT_EQ(std::get<Polygon>(scene[0]).fill.opacity, 0.5);
    EXPECT_EQ(std::get<Polyline>(scene[1]).stroke.width, 1.5);
}

TEST(SmoothPass, NameGrowsWithTheElevationAndStaysInThePicture) {
    const auto body = bodyWith(1, {});
    const auto nameAt = [&](double elevation) {
        return shapesOf<Text>(
                   smoothPassScene(kFrame, *body, anHour(1, elevation), ArchState::plain))
            .at(0);
    };
    EXPECT_EQ(nameAt(40).pixels, 7);
    EXPECT_EQ(nameAt(40.1).pixels, 9);
    EXPECT_EQ(nameAt(80).pixels, 9);
    EXPECT_EQ(nameAt(80.1).pixels, 10);
    EXPECT_EQ(nameAt(90).at.y, 10) << "the pad and two";
}

TEST(SmoothPass, PassWithoutATrackIsATriangle) {
    const auto body = bodyWith(1, {});
    for (const int points : {0, 1}) {
        const PredictedPass pass = passAt(kStart + kHour, kHour, 45, points);
        const auto outline =
            std::get<Polygon>(smoothPassScene(kFrame, *body, pass, ArchState::plain)[0]).points;
        EXPECT_EQ(outline, (std::vector<Point>{{100, 188}, {150, 98}, {200, 188}})) << points;
    }
}

TEST(SmoothPass, TrackBelowTheHorizonIsCutThere) {
    PredictedPass pass = anHour();
    pass.trackPoints.front().elevation = -5;
    pass.trackPoints.back().elevation = -0.1;
    const auto body = bodyWith(1, {});
    const auto outline =
        std::get<Polygon>(smoothPassScene(kFrame, *body, pass, ArchState::plain)[0]).points;
    for (const Point& p : outline) EXPECT_LE(p.y, 188);
    EXPECT_EQ(outline[1].y, 188);
    EXPECT_EQ(outline[3].y, 188);
}

TEST(SmoothPass, OnlyWhatIsInViewAndWideEnoughIsDrawn) {
    const auto body = bodyWith(1, {});
    const auto isDrawnAt = [&](double fromSeconds, double seconds) {
        return !smoothPassScene(kFrame, *body, passAt(kStart + fromSeconds, seconds),
                                ArchState::plain)
                    .empty();
    };
    EXPECT_FALSE(isDrawnAt(-700, 600)) << "over";
    EXPECT_TRUE(isDrawnAt(-600, 600)) << "its end is the left edge";
    EXPECT_TRUE(isDrawnAt(10 * kHour, 600)) << "its begin is the right edge";
    EXPECT_FALSE(isDrawnAt(10 * kHour + 1, 600)) << "still to come";
    EXPECT_TRUE(isDrawnAt(kHour, 36)) << "one point";
    EXPECT_FALSE(isDrawnAt(kHour, 35)) << "less";
}

TEST(SmoothPass, NumbersThatAreNoneAndAbsurdOnesStayDrawable) {
    const auto body = bodyWith(1, {});
    for (const double bad : {kNone, kInfinity, -kInfinity, 1e300, -1e300}) {
        PredictedPass pass = anHour();
        pass.maxElevation = bad;
        pass.peakTime = Instant{bad};
        pass.trackPoints[1] = {Instant{bad}, bad, bad, bad, bad};
        for (const auto state : {ArchState::plain, ArchState::selected}) {
            const Scene scene = smoothPassScene(kFrame, *body, pass, state);
            for (const Point& p : std::get<Polygon>(scene[0]).points) {
                EXPECT_TRUE(std::abs(p.x) <= 1e6 && p.y >= 8 && p.y <= 188) << p.x << " " << p.y;
            }
            for (const Text& name : shapesOf<Text>(scene)) {
                EXPECT_TRUE(std::isfinite(name.at.x) && std::isfinite(name.at.y)) << bad;
            }
        }
        pass.trackPoints.clear();
        EXPECT_FALSE(smoothPassScene(kFrame, *body, pass, ArchState::plain).empty());
        pass.riseTime = Instant{bad};
        EXPECT_EQ(smoothPassScene(kFrame, *body, pass, ArchState::plain).empty(), bad != -1e300)
            << bad;
        pass.setTime = Instant{bad};
        EXPECT_TRUE(smoothPassScene(kFrame, *body, pass, ArchState::plain).empty()) << bad;
    }
}

TEST(SmoothPass, PeakThatIsNoNumberStandsAtTheZenith) {
    PredictedPass pass = anHour();
    pass.maxElevation = kNone;
    EXPECT_EQ(peakElevation(pass), 90);
    const Scene scene = smoothPassScene(kFrame, *bodyWith(1, {}), pass, ArchState::plain);
    EXPECT_EQ(shapesOf<Text>(scene).at(0).pixels, 10);
}

TEST(Arches, HighestPassLiesOnTop) {
    const std::vector<SatellitePtr> bodies = {
        bodyWith(1, {anHour(1, 80), anHour(3, 10)}, "HIGH"),
        bodyWith(2, {anHour(1.5, 30), anHour(5, kNone)}, "LOW")};
    const auto rows = passesByElevation(bodies);
    ASSERT_EQ(rows.size(), 4u);
    const auto names = shapesOf<Text>(archesScene(kFrame, rows, std::nullopt));
    ASSERT_EQ(names.size(), 4u);
    EXPECT_EQ(names[0].at.x, 350);
    EXPECT_EQ(names[1].text, "LOW");
    EXPECT_EQ(names[2].text, "HIGH");
    EXPECT_EQ(names[3].at.x, 550) << "right at the zenith, where the number may be none";
}

TEST(Arches, SelectedAndHoveredAreTheirOwnPassOnly) {
    const auto body = bodyWith(1, {anHour(1), anHour(3)});
    const auto other = bodyWith(2, {anHour(1)});
    const auto rows = passesByElevation({body, other});
    const PassInfo selected{
        .satellite = body, .pass = (*body->passes)[0], .transmitter = std::nullopt};
    const auto opacities = [&](const std::optional<std::string>& hovered) {
        std::vector<double> list;
        for (const auto& p : shapesOf<Polygon>(archesScene(kFrame, rows, selected, hovered))) {
            list.push_back(p.fill.opacity);
        }
        return list;
    };
    const double plain = 0.18 + 0.28 * 0.5;
    EXPECT_EQ(opacities(std::nullopt), (std::vector{0.55, plain, plain}));
    EXPECT_EQ(opacities(passKey(2, (*other->passes)[0].riseTime)), (std::vector{0.55, plain, 0.5}));
    EXPECT_EQ(opacities(passKey(1, (*body->passes)[0].riseTime)), (std::vector{0.55, plain, plain}))
        << "selected counts for more";
}

TEST(Arches, SelectedOneStaysSelectedWhenAComputationShiftsItsTimes) {
    const auto body = bodyWith(1, {anHour(1), anHour(3)});
    const PassInfo selected{
        .satellite = body, .pass = (*body->passes)[1], .transmitter = std::nullopt};
    PassList anew = *body->passes;
    for (PredictedPass& pass : anew) {
        pass.riseTime = pass.riseTime + 0.4;
        pass.setTime = pass.setTime + 0.3;
    }
    // A load puts another object in the place of the body.
    const auto rows = passesByElevation({bodyWith(1, anew)});
    std::vector<double> opacities;
    for (const auto& p : shapesOf<Polygon>(archesScene(kFrame, rows, selected))) {
        opacities.push_back(p.fill.opacity);
    }
    EXPECT_EQ(opacities, (std::vector{0.18 + 0.28 * 0.5, 0.55}));
}

TEST(Arches, WhatLiesBeneathManyIsLeftOutUnlessItIsSelected) {
    PassList passes;
    for (int i = 0; i < 100; ++i) passes.push_back(anHour(1, 20 + i * 0.5));
    passes.push_back(anHour(3, 5));
    const auto body = bodyWith(1, passes);
    const auto rows = passesByElevation({body});
    const auto fills = [&](const std::optional<PassInfo>& selected) {
        return shapesOf<Polygon>(archesScene(kFrame, rows, selected));
    };
    const auto seen = fills(std::nullopt);
    ASSERT_EQ(seen.size(), 17u) << "sixteen of the hundred, and the lone one";
    EXPECT_NEAR(seen[0].points[0].x, 300, 1e-9);
    EXPECT_NEAR(seen.back().points[2].y, kFrame.y(69.5), 1e-9) << "the highest is on top";

    const auto other = bodyWith(2, {anHour(1, 3)});
    const PassInfo lowest{
        .satellite = other, .pass = (*other->passes)[0], .transmitter = std::nullopt};
    const auto all =
        shapesOf<Polygon>(archesScene(kFrame, passesByElevation({body, other}), lowest));
    EXPECT_EQ(all.size(), 18u);
    EXPECT_EQ(all[0].fill.opacity, 0.55);
}

TEST(TappedPass, HighestOfThoseThatAreUpWhateverIsInFront) {
    const auto rows = passesByElevation(
        {bodyWith(1, {anHour(1, 80)}, "HIGH"), bodyWith(2, {anHour(1.5, 30)}, "LOW")});
    const auto nameAt = [&](double x) {
        const auto row = tappedPass(kFrame, rows, x);
        return row ? rows[*row].satellite->name : "none";
    };
    EXPECT_EQ(nameAt(99.9), "none");
    EXPECT_EQ(nameAt(100), "HIGH") << "its begin";
    EXPECT_EQ(nameAt(180), "HIGH") << "both are up";
    EXPECT_EQ(nameAt(200), "HIGH") << "its end";
    EXPECT_EQ(nameAt(200.1), "LOW");
    EXPECT_EQ(nameAt(250.1), "none");
}

TEST(TappedPass, PassTooNarrowToBeDrawnCanBeTapped) {
    const auto rows = passesByElevation({bodyWith(1, {passAt(kStart + kHour, 30)})});
    EXPECT_TRUE(archesScene(kFrame, rows, std::nullopt).empty());
    EXPECT_EQ(tappedPass(kFrame, rows, 100.5), 0u);
    EXPECT_TRUE(drawnPasses(kFrame, rows).empty());
}

TEST(TappedPass, PassWithoutAPlaceIsNotTapped) {
    PredictedPass pass = anHour();
    pass.riseTime = Instant{kNone};
    const auto rows = passesByElevation({bodyWith(1, {pass})});
    EXPECT_EQ(tappedPass(kFrame, rows, 150), std::nullopt);
}

TEST(DrawnPasses, AreThoseOnScreenInOrderOfTime) {
    const auto rows = passesByElevation(
        {bodyWith(1, {anHour(5, 20), anHour(1, 70), anHour(20, 30), anHour(3, 10)})});
    std::vector<double> at;
    for (const std::size_t i : drawnPasses(kFrame, rows)) {
        at.push_back(kFrame.x(rows[i].pass().riseTime));
    }
    EXPECT_EQ(at, (std::vector{100.0, 300.0, 500.0}));
}

TEST(NowMarker, GlowLineAndWord) {
    const Scene scene = nowMarkerScene(kFrame, kStart + 5 * kHour);
    ASSERT_EQ(scene.size(), 3u);
    const auto& glow = std::get<Line>(scene[0]);
    EXPECT_EQ(glow.from, (Point{500, 0}));
    EXPECT_EQ(glow.to, (Point{500, 196}));
    EXPECT_EQ(glow.stroke, (Stroke{Ink::red, 0.12, 8}));
    EXPECT_EQ(std::get<Line>(scene[1]).stroke, (Stroke{Ink::red, 1, 2}));
    const auto& word = std::get<Text>(scene[2]);
    EXPECT_EQ(word.text, "NOW");
    EXPECT_EQ(word.at, (Point{496, 8}));
    EXPECT_EQ(word.anchor, Anchor::trailing);
    EXPECT_EQ(word.pixels, 12);
    EXPECT_EQ(word.weight, QFont::Black);
    EXPECT_EQ(word.fill, (scene::Fill{Ink::red}));
}

TEST(NowMarker, OutsideTheViewThereIsNone) {
    EXPECT_TRUE(nowMarkerScene(kFrame, kStart - 1).empty());
    EXPECT_FALSE(nowMarkerScene(kFrame, kStart).empty());
    EXPECT_FALSE(nowMarkerScene(kFrame, kStart + 10 * kHour).empty());
    EXPECT_TRUE(nowMarkerScene(kFrame, kStart + 10 * kHour + 1).empty());
    EXPECT_TRUE(nowMarkerScene(kFrame, Instant{kNone}).empty());
}

}  // namespace
}  // namespace veloran::test
