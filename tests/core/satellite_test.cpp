#include "core/satellite.h"

#include <gtest/gtest.h>

#include <cmath>

#include "elements/omm_parser.h"
#include "orbit/ground_geometry.h"
#include "orbit/sun_moon.h"
#include "support/core_world.h"

namespace veloran::test {
namespace {

const Instant kNow{817000000.0};

SatellitePtr orbiting() {
    auto satellite = std::make_shared<Satellite>("LEO", 70001);
    satellite->tle = OMMParser::parse(ommGroup({{"LEO", 70001}})).at(0);
    satellite->initOrbit();
    return satellite;
}

TEST(Satellite, WithoutElementsHasNoOrbitAndNoPlace) {
    Satellite satellite("NEW", 1);
    satellite.initOrbit();
    EXPECT_EQ(satellite.satrec, nullptr);
    EXPECT_FALSE(satellite.observe(kNow, 50, 10, 100));
    EXPECT_TRUE(satellite.passes->empty());
    EXPECT_FALSE(satellite.isSelected);
}

TEST(Satellite, HeightOfTheObserverIsGivenInMetres) {
    const auto satellite = orbiting();
    const auto seen = satellite->observe(kNow, 50, 10, 1000);
    ASSERT_TRUE(seen);
    EXPECT_EQ(seen->range, lookAngles(*satellite->satrec, kNow, 50, 10, 1.0)->range);
}

TEST(Satellite, SunAndMoonIgnoreTheHeight) {
    for (const auto kind : {BodyKind::sun, BodyKind::moon}) {
        Satellite body("body", -1);
        body.bodyKind = kind;
        const auto low = body.observe(kNow, 50, 10, 0);
        const auto high = body.observe(kNow, 50, 10, 5000);
        ASSERT_TRUE(low && high);
        EXPECT_EQ(low->elevation, high->elevation);
    }
}

TEST(Satellite, ChannelsAreFoundByDirectionInStoredOrder) {
    Satellite satellite("S", 1,
                        {channel(1, "up"), channel(2, "down"), channel(3, "sideways"),
                         channel(4, "down"), channel(5, "up")});
    ASSERT_EQ(satellite.downlinkTransmitters().size(), 2u);
    EXPECT_EQ(satellite.downlinkTransmitters()[1].freq, 4);
    ASSERT_EQ(satellite.uplinkTransmitters().size(), 2u);
    EXPECT_EQ(satellite.uplinkTransmitters()[0].freq, 1);
    EXPECT_EQ(satellite.primaryDownlink()->freq, 2);
}

TEST(Satellite, WithOnlyUplinksHasNoPrimaryDownlink) {
    EXPECT_FALSE(Satellite("S", 1, {channel(1, "up")}).primaryDownlink());
}

TEST(ObserveFunction, AgreesWithTheBodyAndOutlivesIt) {
    for (const auto kind : {BodyKind::sgp4, BodyKind::sun, BodyKind::moon}) {
        auto satellite = orbiting();
        satellite->bodyKind = kind;
        const auto seen = satellite->observe(kNow, 50, 10, 100);
        const auto observe = observeFunction(*satellite, 50, 10, 100);
        satellite.reset();
        ASSERT_TRUE(seen);
        EXPECT_EQ(observe(kNow)->azimuth, seen->azimuth);
        EXPECT_EQ(observe(kNow)->range, seen->range);
    }
}

TEST(ObserveFunction, WithoutAnOrbitSeesNothing) {
    EXPECT_FALSE(observeFunction(Satellite("S", 1), 50, 10, 100)(kNow));
}

TEST(SubPoint, OfASatelliteIsThatOfItsOrbit) {
    const auto satellite = orbiting();
    const auto point = satellite->currentSubPoint(kNow);
    ASSERT_TRUE(point);
    EXPECT_EQ(point->latitudeDeg, subSatellitePoint(*satellite->satrec, kNow)->latitudeDeg);
    EXPECT_LE(std::abs(point->latitudeDeg), 52.0);
    EXPECT_NEAR(point->altitudeKm, 420, 100);
}

TEST(SubPoint, OfSunAndMoonStandsAtTheirDistance) {
    Satellite sun("Sun", -1);
    sun.bodyKind = BodyKind::sun;
    Satellite moon("Moon", -2);
    moon.bodyKind = BodyKind::moon;
    EXPECT_EQ(sun.currentSubPoint(kNow)->longitudeDeg, sunSubPoint(kNow).longitudeDeg);
    EXPECT_NEAR(sun.currentSubPoint(kNow)->altitudeKm, 1.496e8, 3e6);
    EXPECT_EQ(moon.currentSubPoint(kNow)->longitudeDeg, moonSubPoint(kNow).longitudeDeg);
    EXPECT_NEAR(moon.currentSubPoint(kNow)->altitudeKm, 384400, 25000);
}

TEST(SubPoint, WithoutAnOrbitIsAbsentAndTheTrackEmpty) {
    const Satellite satellite("S", 1);
    EXPECT_FALSE(satellite.currentSubPoint(kNow));
    EXPECT_TRUE(groundTrack(satellite, kNow, kNow + 600).empty());
}

TEST(GroundTrackOfABody, ServesSatelliteSunAndMoonEvery30Seconds) {
    for (const auto kind : {BodyKind::sgp4, BodyKind::sun, BodyKind::moon}) {
        const auto satellite = orbiting();
        satellite->bodyKind = kind;
        const auto track = groundTrack(*satellite, kNow, kNow + 90);
        ASSERT_EQ(track.size(), 4u);
        for (std::size_t i = 0; i < track.size(); ++i) {
            const auto point = satellite->currentSubPoint(kNow + 30.0 * static_cast<double>(i));
            EXPECT_EQ(track[i].longitudeDeg, point->longitudeDeg);
            EXPECT_EQ(track[i].latitudeDeg, point->latitudeDeg);
        }
    }
}

}  // namespace
}  // namespace veloran::test
