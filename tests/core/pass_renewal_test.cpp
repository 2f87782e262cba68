#include "core/pass_renewal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace veloran::test {
namespace {

constexpr double kDay = 86400;
constexpr Instant kStart{817000000.0};  // of the former search
constexpr Instant kNow = kStart + 300;  // of the new one

PassSearch searchAt(Instant start) {
    return {start, start + kDay, 33.87, -84.34, 300};
}

/// A pass told by its ends; azimuths and peak say which list it comes from.
PredictedPass pass(Instant rise, Instant set, double mark) {
    PredictedPass result;
    result.riseTime = rise;
    result.setTime = set;
    result.duration = set - rise;
    result.peakTime = rise + (set - rise) / 2;
    result.maxElevation = 40 + mark;
    result.riseAzimuth = 100 + mark;
    result.setAzimuth = 200 + mark;
    result.peakAzimuth = 150 + mark;
    for (int i = 0; i <= 20; ++i) {
        result.trackPoints.push_back({rise + (set - rise) * i / 20, mark, 0, 0, 0});
    }
    return result;
}

void expectSame(const PredictedPass& a, const PredictedPass& b) {
    EXPECT_EQ(a.riseTime, b.riseTime);
    EXPECT_EQ(a.setTime, b.setTime);
    EXPECT_EQ(a.duration, b.duration);
    EXPECT_EQ(a.peakTime, b.peakTime);
    EXPECT_EQ(a.maxElevation, b.maxElevation);
    EXPECT_EQ(a.riseAzimuth, b.riseAzimuth);
    EXPECT_EQ(a.setAzimuth, b.setAzimuth);
    EXPECT_EQ(a.peakAzimuth, b.peakAzimuth);
    ASSERT_EQ(a.trackPoints.size(), b.trackPoints.size());
    for (std::size_t i = 0; i < a.trackPoints.size(); ++i) {
        EXPECT_EQ(a.trackPoints[i].date, b.trackPoints[i].date);
        EXPECT_EQ(a.trackPoints[i].azimuth, b.trackPoints[i].azimuth);
    }
}

class Renewal : public ::testing::Test {
  protected:
    PassList renewed(PassList found) const {
        return renewedPasses(std::move(found), searchAt(kNow), former());
    }
    FormerPasses former() const {
        return {std::make_shared<const PassList>(old), oldSearch, sameElements};
    }

    const PredictedPass before = pass(kNow - 5000, kNow - 4400, 0);
    const PredictedPass underWay = pass(kNow - 200, kNow + 400, 0);
    const PredictedPass rest = pass(kNow - 10, kNow + 400.000001, 1);
    const PredictedPass next = pass(kNow + 6000, kNow + 6600, 1);
    PassList old{before, underWay, pass(kNow + 6000.000002, kNow + 6600, 0)};
    PassSearch oldSearch = searchAt(kStart);
    bool sameElements = true;
};

TEST_F(Renewal, PassUnderWayStaysWholeInPlaceOfItsRest) {
    const auto list = renewed({rest, next});
    ASSERT_EQ(list.size(), 2u);
    expectSame(list[0], underWay);
    expectSame(list[1], next);
}

TEST_F(Renewal, PassWhoseRestStaysLowStaysInFront) {
    const auto list = renewed({next});
    ASSERT_EQ(list.size(), 2u);
    expectSame(list[0], underWay);
    expectSame(list[1], next);
}

TEST_F(Renewal, IsOfTheVeryRiseAndNotOfTheVerySet) {
    old = {pass(kNow, kNow + 600, 0)};
    EXPECT_EQ(renewed({}).size(), 1u);
    old = {pass(kNow + 0.001, kNow + 600, 0)};
    EXPECT_TRUE(renewed({}).empty()) << "not risen yet: the search would have found it";
    old = {pass(kNow - 600, kNow, 0)};
    EXPECT_TRUE(renewed({}).empty()) << "has set";
}

TEST_F(Renewal, ForAnObserverElsewhereWhatWasFoundStands) {
    for (double PassSearch::*part :
         {&PassSearch::obsLat, &PassSearch::obsLon, &PassSearch::obsAltMeters}) {
        oldSearch = searchAt(kStart);
        oldSearch.*part += 0.001;
        const auto list = renewed({rest, next});
        ASSERT_EQ(list.size(), 2u);
        expectSame(list[0], rest);
    }
}

TEST_F(Renewal, PassCutByTheEndOfItsSearchKeepsItsRiseAndEarlyTrackAlone) {
    old = {pass(kNow - 4000, oldSearch.end, 0)};
    const auto found = pass(kNow - 10, kNow + 90000, 1);
    const auto list = renewed({found});
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0].riseTime, kNow - 4000);
    EXPECT_EQ(list[0].riseAzimuth, 100);
    EXPECT_EQ(list[0].setTime, found.setTime);
    EXPECT_EQ(list[0].setAzimuth, 201);
    EXPECT_EQ(list[0].peakTime, found.peakTime);
    EXPECT_EQ(list[0].maxElevation, 41);
    EXPECT_EQ(list[0].peakAzimuth, 151);
    EXPECT_EQ(list[0].duration, 94000);
    const auto& track = list[0].trackPoints;
    EXPECT_EQ(track.front().date, kNow - 4000);
    EXPECT_EQ(track.back().date, found.setTime);
    for (std::size_t i = 0; i < track.size(); ++i) {
        EXPECT_EQ(track[i].azimuth, track[i].date < found.riseTime ? 0 : 1) << i;
        if (i == 0) continue;
        EXPECT_LT(track[i - 1].date, track[i].date);
    }
}

TEST_F(Renewal, LowerMaximumOfACutPassIsTakenTooAndCannotBeTheEarlierOne) {
    old = {pass(kNow - 4000, oldSearch.end, 5)};
    EXPECT_EQ(renewed({pass(kNow - 10, kNow + 90000, 1)}).at(0).maxElevation, 41);
}

TEST_F(Renewal, TrackOfABodyThatNeverSetsDoesNotGrow) {
    PassSearch search = searchAt(kStart);
    PassList list{pass(kStart - 10, search.end, 0)};
    for (int run = 1; run <= 1000; ++run) {
        const FormerPasses earlier{std::make_shared<const PassList>(list), search, true};
        search = searchAt(kStart + 300.0 * run);
        list = renewedPasses({pass(search.start - 10, search.end, 0)}, search, earlier);
        ASSERT_EQ(list.size(), 1u);
    }
    EXPECT_EQ(list[0].riseTime, kStart - 10);
    EXPECT_EQ(list[0].setTime, search.end);
    EXPECT_EQ(list[0].duration, search.end - kStart + 10);
    EXPECT_LE(list[0].trackPoints.size(), 201u);
    EXPECT_EQ(list[0].trackPoints.front().date, kStart - 10);
    EXPECT_EQ(list[0].trackPoints.back().date, search.end);
}

TEST_F(Renewal, OtherElementsMoveTheSetAndNotTheRise) {
    sameElements = false;
    const auto found = pass(kNow - 10, kNow + 412, -2);  // lower: the peak is behind it
    const auto list = renewed({found, next});
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0].riseTime, underWay.riseTime);
    EXPECT_EQ(list[0].riseAzimuth, underWay.riseAzimuth);
    EXPECT_EQ(list[0].setTime, found.setTime);
    EXPECT_EQ(list[0].setAzimuth, found.setAzimuth);
    EXPECT_EQ(list[0].duration, 612);
    EXPECT_EQ(list[0].peakTime, underWay.peakTime);
    EXPECT_EQ(list[0].maxElevation, underWay.maxElevation);
    EXPECT_EQ(list[0].peakAzimuth, underWay.peakAzimuth);
    EXPECT_EQ(list[0].trackPoints.back().date, found.setTime);
}

TEST_F(Renewal, OtherElementsMoveAPeakThatIsToCome) {
    sameElements = false;
    const auto found = pass(kNow - 10, kNow + 412, 3);
    const auto list = renewed({found});
    EXPECT_EQ(list.at(0).peakTime, found.peakTime);
    EXPECT_EQ(list.at(0).maxElevation, found.maxElevation);
    EXPECT_EQ(list.at(0).peakAzimuth, found.peakAzimuth);
}

TEST_F(Renewal, OtherElementsThatFindNothingLeaveTheEntry) {
    sameElements = false;
    expectSame(renewed({next}).at(0), underWay);
}

TEST_F(Renewal, WithoutAPassUnderWayWhatWasFoundStands) {
    old = {before, next};
    const auto list = renewed({next});
    ASSERT_EQ(list.size(), 1u);
    expectSame(list[0], next);
    old.clear();
    EXPECT_EQ(renewed({rest, next}).size(), 2u);
}

}  // namespace
}  // namespace veloran::test
