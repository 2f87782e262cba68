#include "ui/map/pass_track_cache.h"

#include <cmath>
#include <limits>

#include "map_bodies.h"

namespace veloran::test {
namespace {

class PassTrackCacheTest : public ::testing::Test {
  protected:
    void recompute(const PassInfo& pass) { cache.recomputePassCache(pass); }

    SatellitePtr inclined = orbiting(51.6);
    SatellitePtr polar = orbiting(98, 33591, "NOAA 19");
    PassTrackCache cache;
};

TEST_F(PassTrackCacheTest, TrackGoesFromRiseToSetInTwoHundredSteps) {
    recompute(passOf(inclined, kMapStart, 2000));
    EXPECT_EQ(cache.cachedPass->riseTime, kMapStart);
    ASSERT_EQ(cache.cachedTrack.size(), 201u) << "10 s each, both ends";
    const auto second = inclined->currentSubPoint(kMapStart + 10);
    EXPECT_DOUBLE_EQ(cache.cachedTrack[1].longitudeDeg, second->longitudeDeg);
}

TEST_F(PassTrackCacheTest, ShortPassIsSampledEveryFiveSeconds) {
    recompute(passOf(inclined, kMapStart, 600));
    EXPECT_EQ(cache.cachedTrack.size(), 121u);
}

TEST_F(PassTrackCacheTest, OutlineIsThatOfTheCoverageCutAtTheDateLine) {
    recompute(passOf(inclined, kMapStart, 1500));
    ASSERT_EQ(cache.cachedCoverage.rings.size(), 1u);
    EXPECT_EQ(cache.cachedCoverageArcs,
              splitPolygonArcsAtAntimeridian(cache.cachedCoverage.rings[0]));
}

TEST_F(PassTrackCacheTest, PolarPassHasACoverageWithoutAnOutline) {
    recompute(passOf(polar, kMapStart, 1200));
    EXPECT_FALSE(cache.cachedCoverage.isEmpty());
    EXPECT_TRUE(cache.cachedCoverageArcs.empty());
}

TEST_F(PassTrackCacheTest, HighLatitudeOfAnInclinedOrbitIsNoPolarPass) {
    recompute(passOf(orbiting(74), kMapStart, 6000));
    EXPECT_FALSE(cache.cachedCoverageArcs.empty());
}

TEST_F(PassTrackCacheTest, AnotherRiseTimeRecomputes) {
    recompute(passOf(inclined, kMapStart, 600));
    const auto before = cache.cachedTrack;
    recompute(passOf(inclined, kMapStart + 6000, 700));
    EXPECT_EQ(cache.cachedPass->riseTime, kMapStart + 6000);
    EXPECT_NE(cache.cachedTrack.size(), before.size());
}

TEST_F(PassTrackCacheTest, SamePassWithSlightlyOtherTimesDoesNot) {
    recompute(passOf(inclined, kMapStart, 600));
    const auto before = cache.cachedTrack;
    recompute(passOf(inclined, kMapStart + 3, 601));
    EXPECT_EQ(cache.cachedPass->riseTime, kMapStart);
    ASSERT_EQ(cache.cachedTrack.size(), before.size());
    EXPECT_EQ(cache.cachedTrack[50].latitudeDeg, before[50].latitudeDeg);
}

TEST_F(PassTrackCacheTest, PassThatIsNowSeenToItsEndRecomputes) {
    recompute(passOf(inclined, kMapStart, 300));
    recompute(passOf(inclined, kMapStart, 600));
    EXPECT_EQ(cache.cachedTrack.size(), 121u);
}

TEST_F(PassTrackCacheTest, AnotherSatelliteAtTheSameTimeRecomputes) {
    recompute(passOf(inclined, kMapStart, 600));
    recompute(passOf(polar, kMapStart, 600));
    EXPECT_EQ(cache.cachedTrack[50].latitudeDeg,
              polar->currentSubPoint(kMapStart + 250)->latitudeDeg);
}

TEST_F(PassTrackCacheTest, WithoutAPassNothingIsKept) {
    recompute(passOf(inclined, kMapStart, 600));
    cache.recomputePassCache(std::nullopt);
    EXPECT_FALSE(cache.cachedPass);
    EXPECT_TRUE(cache.cachedTrack.empty());
    EXPECT_TRUE(cache.cachedCoverage.isEmpty());
    EXPECT_TRUE(cache.cachedCoverageArcs.empty());
}

TEST_F(PassTrackCacheTest, BodyWithoutAnOrbitHasAnEmptyTrackUnderItsKey) {
    recompute(passOf(std::make_shared<Satellite>("X", 1), kMapStart, 600));
    EXPECT_EQ(cache.cachedPass->riseTime, kMapStart);
    EXPECT_TRUE(cache.cachedTrack.empty());
    EXPECT_TRUE(cache.cachedCoverage.isEmpty());
}

TEST_F(PassTrackCacheTest, PassOfAnyLengthIsDoneInAMoment) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double seconds : {-600.0, 0.0, 3e8, 1e300, kInfinity, std::nan("")}) {
        recompute(passOf(inclined, kMapStart + seconds / 2, seconds));
        EXPECT_LE(cache.cachedTrack.size(), 201u) << seconds;
    }
    recompute(passOf(inclined, Instant{1e20}, 600));
    EXPECT_TRUE(cache.cachedTrack.empty()) << "where five seconds more are the same time";
}

TEST(SplitAtAntimeridian, NewSegmentWhereTheLongitudeJumps) {
    const std::vector<SubSatellitePoint> points = {
        {0, 170, 400}, {1, 179, 400}, {2, -175, 400}, {3, 178, 400}, {4, -2, 400}};
    EXPECT_EQ(splitAtAntimeridian(points),
              (std::vector<GeoRing>{{{0, 170}, {1, 179}}, {{2, -175}}, {{3, 178}, {4, -2}}}))
        << "a jump of exactly 180 degrees is none";
}

TEST(SplitAtAntimeridian, NoPointsGiveNoSegment) {
    EXPECT_TRUE(splitAtAntimeridian({}).empty());
    EXPECT_TRUE(passTrackSegments({}).empty());
}

std::size_t pointCount(const std::vector<GeoRing>& segments) {
    std::size_t count = 0;
    for (const GeoRing& segment : segments) count += segment.size();
    return count;
}

TEST(ExtendedTrack, IsSampledInFourHundredStepsOfFifteenSecondsAtLeast) {
    const auto satellite = orbiting(51.6);
    EXPECT_EQ(pointCount(extendedTrackSegments(*satellite, kMapStart, 4)), 401u) << "72 s each";
    EXPECT_EQ(pointCount(extendedTrackSegments(*satellite, kMapStart, 0.5)), 241u) << "15 s each";
}

TEST(ExtendedTrack, LiesAboutNowAndIsCutWhereItLeavesTheMap) {
    const auto satellite = orbiting(51.6);
    const auto segments = extendedTrackSegments(*satellite, kMapStart, 4);
    EXPECT_GE(segments.size(), 5u) << "five revolutions";
    const auto first = satellite->currentSubPoint(kMapStart - 4 * 3600);
    EXPECT_EQ(segments.front().front(), (GeoPoint{first->latitudeDeg, first->longitudeDeg}));
    for (const GeoRing& segment : segments) {
        for (std::size_t i = 1; i < segment.size(); ++i) {
            EXPECT_LE(std::abs(segment[i].lon - segment[i - 1].lon), 180);
        }
    }
}

}  // namespace
}  // namespace veloran::test
