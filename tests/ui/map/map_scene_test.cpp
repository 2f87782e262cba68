#include "ui/map/map_scene.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>

#include "ui/theme.h"

namespace veloran {
namespace {

/// Degrees are pixels, y up; the south is out of sight, and lines end at the equator.
class NorthernHalf final : public MapProjection {
  public:
    std::vector<scene::Point> toScreen(GeoPoint point) const override {
        if (point.lat < 0) return {};
        return {{point.lon, -point.lat}};
    }
    std::optional<GeoPoint> toGeo(scene::Point point) const override {
        return GeoPoint{-point.y, point.x};
    }
    std::vector<ScreenLine> line(const GeoRing& points) const override {
        ScreenLine piece;
        for (const GeoPoint& point : points) {
            for (const auto& at : toScreen(point)) piece.push_back(at);
        }
        if (piece.empty()) return {};
        return {piece};
    }
    std::vector<ScreenLine> area(const GeoRing& ring) const override { return line(ring); }
    std::vector<ScreenLine> region(const GroundRegion& region) const override {
        std::vector<ScreenLine> rings;
        for (const GeoRing& ring : region.rings) {
            for (ScreenLine& piece : line(ring)) rings.push_back(std::move(piece));
        }
        return rings;
    }
};

scene::Scene sceneOf(MapLayers layers) {
    return mapScene(layers, NorthernHalf());
}

double tagHeight() {
    return QFontMetricsF(Theme::face(9, QFont::DemiBold)).height() + 2;
}

TEST(MapScene, SiteIsACircleWithItsSymbolAndItsLabelBelow) {
    const auto scene = sceneOf({MapSite{{50, 10}, "Home", Symbol::antenna, Ink::cyan}});
    ASSERT_EQ(scene.size(), 3u);
    const auto& disc = std::get<scene::Disc>(scene[0]);
    EXPECT_EQ(disc.center, (scene::Point{10, -50}));
    EXPECT_EQ(disc.radius, 10);
    EXPECT_EQ(disc.fill, (scene::Fill{Ink::cyan, 0.3}));
    const auto& icon = std::get<scene::Icon>(scene[1]);
    EXPECT_EQ(icon.center, disc.center);
    EXPECT_EQ(icon.size, 10);
    EXPECT_EQ(icon.symbol, Symbol::antenna);
    EXPECT_EQ(icon.paint, Paint(Ink::cyan));
    const auto& label = std::get<scene::Tag>(scene[2]);
    EXPECT_EQ(label.text, "Home");
    EXPECT_DOUBLE_EQ(label.center.x, 10);
    EXPECT_DOUBLE_EQ(label.center.y, -50 + 10 + 2 + tagHeight() / 2);
}

TEST(MapScene, SiteOnAPictureOfTheEarthHasAPlateBelow) {
    const auto scene = sceneOf({MapSite{{50, 10}, "", Symbol::antenna, Ink::cyan, true}});
    ASSERT_EQ(scene.size(), 3u);
    EXPECT_EQ(std::get<scene::Disc>(scene[0]).fill, (scene::Fill{Ink::window, 0.7}));
    EXPECT_EQ(std::get<scene::Disc>(scene[0]).radius, 10);
    EXPECT_EQ(std::get<scene::Disc>(scene[1]).fill, (scene::Fill{Ink::cyan, 0.3}));
}

TEST(MapScene, WhiteLineHasADarkEdge) {
    const scene::Stroke white{RgbColor{1, 1, 1}, 0.85, 1.5, 4, 4};
    const auto scene = sceneOf({MapLine{{{1, 2}, {3, 4}}, white}});
    ASSERT_EQ(scene.size(), 2u);
    const auto& edge = std::get<scene::Polyline>(scene[0]);
    EXPECT_EQ(edge.stroke, (scene::Stroke{RgbColor{0, 0, 0}, 0.3, 2.5, 4, 4}));
    EXPECT_EQ(edge.points, std::get<scene::Polyline>(scene[1]).points);
    EXPECT_EQ(std::get<scene::Polyline>(scene[1]).stroke, white);
}

TEST(MapScene, SiteWithoutANameHasNoLabel) {
    EXPECT_EQ(sceneOf({MapSite{{50, 10}, "", Symbol::pin, Ink::orange}}).size(), 2u);
}

TEST(MapScene, LabelsOfSitesLieAboveLinesAndBelowTheSatellite) {
    const auto scene = sceneOf({MapSite{{50, 10}, "Home", Symbol::antenna, Ink::cyan},
                                MapLine{{{1, 2}, {3, 4}}, {Ink::green}},
                                MapSatellite{{20, 30}, "RS-44", Ink::red}});
    ASSERT_EQ(scene.size(), 7u);
    EXPECT_TRUE(std::holds_alternative<scene::Disc>(scene[0]));
    EXPECT_TRUE(std::holds_alternative<scene::Polyline>(scene[2]));
    EXPECT_EQ(std::get<scene::Tag>(scene[3]).text, "Home");
    EXPECT_EQ(std::get<scene::Tag>(scene[4]).text, "RS-44");
}

TEST(MapScene, SatelliteIsADiscAtItsPlaceWithItsNameTwoPointsAbove) {
    const RgbColor color{0.2, 0.4, 0.6};
    const auto scene = sceneOf({MapSatellite{{20, 30}, "RS-44", color}});
    ASSERT_EQ(scene.size(), 3u);
    const auto& tag = std::get<scene::Tag>(scene[0]);
    EXPECT_EQ(tag.text, "RS-44");
    EXPECT_EQ(tag.pixels, 9);
    EXPECT_EQ(tag.weight, QFont::DemiBold);
    EXPECT_EQ(tag.horizontalPadding, 4);
    EXPECT_EQ(tag.verticalPadding, 1);
    EXPECT_EQ(tag.cornerRadius, 3);
    EXPECT_DOUBLE_EQ(tag.center.x, 30);
    EXPECT_DOUBLE_EQ(tag.center.y + tagHeight() / 2, -20 - 8 - 2);
    const auto& disc = std::get<scene::Disc>(scene[1]);
    EXPECT_EQ(disc.center, (scene::Point{30, -20}));
    EXPECT_EQ(disc.radius, 8);
    EXPECT_EQ(disc.fill, (scene::Fill{color, 1}));
    const auto& icon = std::get<scene::Icon>(scene[2]);
    EXPECT_EQ(icon.center, disc.center);
    EXPECT_EQ(icon.size, 9);
    EXPECT_EQ(icon.symbol, Symbol::satellite);
    EXPECT_EQ(icon.paint, Paint(RgbColor{1, 1, 1}));
}

TEST(MapScene, WhatTheProjectionHidesIsNotDrawn) {
    EXPECT_TRUE(sceneOf({MapSite{{-1, 10}, "Home", Symbol::antenna, Ink::cyan},
                         MapLine{{{-1, 0}, {-2, 0}}, {Ink::red}},
                         MapSatellite{{-20, 30}, "RS-44", Ink::red}})
                    .empty());
}

TEST(MapScene, AreasAndLinesKeepTheirOrderAndStyle) {
    const GeoRing outer = {{0, 0}, {0, 10}, {10, 10}};
    const GeoRing hole = {{1, 5}, {2, 6}, {1, 6}};
    const auto scene = sceneOf({MapArea{{{outer, hole}}, {Ink::red, 0.18}},
                                MapLine{{{1, 2}, {-3, 4}, {5, 6}}, {Ink::green, 0.9, 1.5, 3, 3}}});
    ASSERT_EQ(scene.size(), 2u);
    const auto& region = std::get<scene::Region>(scene[0]);
    EXPECT_EQ(region.fill, (scene::Fill{Ink::red, 0.18}));
    EXPECT_EQ(region.rings,
              (std::vector<ScreenLine>{{{0, 0}, {10, 0}, {10, -10}}, {{5, -1}, {6, -2}, {6, -1}}}));
    const auto& line = std::get<scene::Polyline>(scene[1]);
    EXPECT_EQ(line.stroke, (scene::Stroke{Ink::green, 0.9, 1.5, 3, 3}));
    EXPECT_EQ(line.points, (ScreenLine{{2, -1}, {6, -5}}));
}

TEST(MapScene, AreaOutOfSightIsNotDrawn) {
    EXPECT_TRUE(sceneOf({MapArea{{{{{-1, 0}, {-1, 9}, {-2, 9}}}}, {Ink::red}}}).empty());
}

}  // namespace
}  // namespace veloran
