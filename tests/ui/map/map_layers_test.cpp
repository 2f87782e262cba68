#include "ui/map/map_layers.h"

#include <algorithm>
#include <cmath>

#include "map_bodies.h"

namespace veloran::test {
namespace {

constexpr RgbColor kAmber{1, 0.85, 0.25};
constexpr RgbColor kWhite{1, 1, 1};

class MapLayersTest : public ::testing::Test {
  protected:
    MapLayersTest() {
        content.home = homeSite({33.87, -84.34}, "Home");
        cache.cachedTrack = {{0, 10, 400}, {1, 20, 400}};
        cache.cachedCoverage.rings = {{{0, 0}, {0, 10}, {10, 10}}, {{20, 0}, {20, 10}, {30, 10}}};
        cache.cachedCoverageArcs = {{{0, 0}, {10, 0}, {10, 10}}};
    }

    void select(const SatellitePtr& body) {
        satellite = body;
        content.selectedPass = passOf(body, kMapStart, 600);
    }
    Paint satColor() const { return SatelliteColorPalette::color(satellite->id); }
    MapLayers layers() const { return mapLayers(content, cache, kMapStart); }
    template <class T>
    std::vector<T> all() const {
        std::vector<T> found;
        for (const MapLayer& layer : layers()) {
            if (const T* shape = std::get_if<T>(&layer)) found.push_back(*shape);
        }
        return found;
    }
    SatellitePtr satellite;
    MapContent content;
    PassTrackCache cache;
};

TEST_F(MapLayersTest, WithoutAPassOnlyTheSitesAreShown) {
    content.extendedTrackHours = 4;
    content.second = secondSite({51.5, -0.1}, "London");
    EXPECT_EQ(layers(), (MapLayers{MapSite{{33.87, -84.34}, "Home", Symbol::antenna, Ink::cyan},
                                   MapSite{{51.5, -0.1}, "London", Symbol::pin, Ink::orange}}));
}

TEST_F(MapLayersTest, SitesOnTheGlobeLieOnAPicture) {
    EXPECT_FALSE(all<MapSite>()[0].onPicture);
    content.style = MapStyle::imagery;
    EXPECT_TRUE(all<MapSite>()[0].onPicture);
}

TEST_F(MapLayersTest, EmptyNameOfTheObserverReadsHome) {
    content.home = homeSite({1, 2}, "");
    EXPECT_EQ(all<MapSite>()[0].label, "Home");
    EXPECT_EQ(secondSite({1, 2}, "").label, "");
}

TEST_F(MapLayersTest, SiteThatIsNotOnTheEarthIsLeftOut) {
    content.home = homeSite({91, 0}, "Home");
    content.second = secondSite({0, std::nan("")}, "Site 2");
    EXPECT_TRUE(layers().empty());
    content.second = secondSite({0, 370}, "Site 2");
    EXPECT_EQ(all<MapSite>().at(0).at, (GeoPoint{0, 10}));
}

TEST_F(MapLayersTest, LayersComeInTheirOrderAndStyles) {
    select(orbiting(51.6));
    content.extendedTrackHours = 0.5;
    content.second = secondSite({51.5, -0.1}, "London");
    const MapLayers list = layers();
    std::vector<std::string> order;
    for (const MapLayer& layer : list) {
        std::string name;
        if (const auto* area = std::get_if<MapArea>(&layer)) {
            name = area->fill == scene::Fill{kAmber, 0.18}       ? "coverage"
                   : area->fill == scene::Fill{satColor(), 0.08} ? "footprint"
                                                                 : "unknown area";
        } else if (const auto* line = std::get_if<MapLine>(&layer)) {
            const auto& stroke = line->stroke;
            name = stroke == scene::Stroke{kAmber, 0.9, 1.5}             ? "coverage outline"
                   : stroke == scene::Stroke{kWhite, 0.85, 1.5, 4, 4}    ? "extended track"
                   : stroke == scene::Stroke{satColor(), 0.95, 2.5}      ? "pass track"
                   : stroke == scene::Stroke{satColor(), 0.9, 1.5, 3, 3} ? "horizon"
                                                                         : "unknown line";
        } else {
            name = std::holds_alternative<MapSite>(layer) ? "site" : "satellite";
        }
        if (order.empty() || order.back() != name) order.push_back(name);
    }
    EXPECT_EQ(order,
              (std::vector<std::string>{"site", "coverage", "coverage outline", "extended track",
                                        "pass track", "footprint", "horizon", "satellite"}));
    EXPECT_EQ(std::get<MapSite>(list[0]).label, "Home");
    EXPECT_EQ(std::get<MapSite>(list[1]).label, "London");
}

TEST_F(MapLayersTest, SatelliteStandsAtItsSubPointWithItsNameAndColour) {
    select(orbiting(51.6));
    const auto point = satellite->currentSubPoint(kMapStart);
    EXPECT_EQ(all<MapSatellite>(),
              std::vector{
                  (MapSatellite{{point->latitudeDeg, point->longitudeDeg}, "RS-44", satColor()})});
}

TEST_F(MapLayersTest, SliderAtZeroShowsNoExtendedTrack) {
    select(orbiting(51.6));
    const auto lines = all<MapLine>();
    EXPECT_TRUE(std::ranges::none_of(
        lines, [](const MapLine& line) { return line.stroke.paint == Paint(kWhite); }));
}

TEST_F(MapLayersTest, BodyWithoutAnOrbitShowsTheCachedTrackOnly) {
    select(std::make_shared<Satellite>("X", 1));
    EXPECT_TRUE(all<MapSatellite>().empty());
    EXPECT_EQ(all<MapArea>().size(), 1u) << "the coverage";
    EXPECT_EQ(all<MapLine>().size(), 2u) << "its outline and the track";
}

TEST_F(MapLayersTest, CoverageIsFilledOnceOnEveryMap) {
    select(std::make_shared<Satellite>("X", 1));
    for (const MapStyle style : kMapStyles) {
        content.style = style;
        EXPECT_EQ(all<MapArea>(), std::vector{(MapArea{cache.cachedCoverage, {kAmber, 0.18}})});
    }
    cache.cachedCoverage = {.rings = {}, .holdsNorthPole = true};
    EXPECT_EQ(all<MapArea>().size(), 1u) << "all of the ground";
    cache.cachedCoverage = {};
    EXPECT_TRUE(all<MapArea>().empty());
}

TEST_F(MapLayersTest, TrackOverTheDateLineIsTwoLinesThatEndThere) {
    select(std::make_shared<Satellite>("X", 1));
    cache.cachedTrack = {{0, 176, 400}, {2, 178, 400}, {8, -176, 400}, {10, -174, 400}};
    cache.cachedCoverageArcs.clear();
    const auto lines = all<MapLine>();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].points, (GeoRing{{0, 176}, {2, 178}, {4, 180}}));
    EXPECT_EQ(lines[1].points, (GeoRing{{4, -180}, {8, -176}, {10, -174}}));
    cache.cachedTrack = {{10, -176, 400}, {2, 176, 400}};
    EXPECT_EQ(all<MapLine>()[0].points, (GeoRing{{10, -176}, {6, -180}})) << "to the west";
    cache.cachedTrack = {{10, 180, 400}, {2, -180, 400}};
    EXPECT_EQ(all<MapLine>()[0].points, (GeoRing{{10, 180}, {10, 180}})) << "no way at all";
}

TEST_F(MapLayersTest, ShapeWithAPointThatIsNoneIsLeftOut) {
    select(std::make_shared<Satellite>("X", 1));
    cache.cachedTrack[1].latitudeDeg = std::nan("");
    cache.cachedCoverage.rings[1][1].lon = std::nan("");
    EXPECT_EQ(all<MapLine>().size(), 1u);
    EXPECT_TRUE(all<MapArea>().empty());
}

TEST(CurrentSubSatellitePoint, NeedsAPassAndAnOrbit) {
    EXPECT_FALSE(currentSubSatellitePoint(std::nullopt, kMapStart));
    EXPECT_FALSE(currentSubSatellitePoint(
        passOf(std::make_shared<Satellite>("X", 1), kMapStart, 600), kMapStart));
    const auto satellite = orbiting(51.6);
    const auto point = currentSubSatellitePoint(passOf(satellite, kMapStart, 600), kMapStart + 30);
    ASSERT_TRUE(point);
    EXPECT_EQ(point->latitudeDeg, satellite->currentSubPoint(kMapStart + 30)->latitudeDeg);
}

}  // namespace
}  // namespace veloran::test
