#include "core/live_geo_cache.h"

#include <gtest/gtest.h>

#include <vector>

namespace veloran {
namespace {

const Instant kBucket = Instant::fromUnixSeconds(1795307200.25);

class LiveGeoCacheTest : public ::testing::Test {
  protected:
    std::optional<TopocentricResult> ask(std::int64_t satId, Instant at, double offset = 0) {
        return cache.lookUp(satId, at, offset, [this](Instant when) {
            asked.push_back(when.unixSeconds());
            return answer;
        });
    }

    LiveGeoCache cache;
    std::vector<double> asked;
    std::optional<TopocentricResult> answer = TopocentricResult{1, 2, 3, 4};
};

TEST_F(LiveGeoCacheTest, FirstRequestMissesEvenForTheSun) {
    EXPECT_TRUE(ask(-1, kBucket));
    EXPECT_EQ(asked.size(), 1u);
}

TEST_F(LiveGeoCacheTest, TimeWithinTheQuarterSecondGetsItsStart) {
    ask(5, kBucket + 0.2);
    EXPECT_EQ(asked, std::vector<double>{1795307200.25});
    ask(5, kBucket + 0.1);
    EXPECT_EQ(asked.size(), 1u);
}

TEST_F(LiveGeoCacheTest, NextQuarterSecondStartsAnew) {
    ask(5, kBucket);
    ask(5, kBucket + 0.25);
    ask(5, kBucket);
    EXPECT_EQ(asked.size(), 3u);
}

TEST_F(LiveGeoCacheTest, AlternatingBodiesPropagateEveryTime) {
    for (int i = 0; i < 3; ++i) {
        ask(5, kBucket);
        ask(6, kBucket);
    }
    EXPECT_EQ(asked.size(), 6u);
}

TEST_F(LiveGeoCacheTest, EachOffsetIsAnEntryOfItsOwn) {
    ask(5, kBucket, 0);
    ask(5, kBucket, 30);
    ask(5, kBucket, 30);
    EXPECT_EQ(asked, (std::vector<double>{1795307200.25, 1795307230.25}));
}

TEST_F(LiveGeoCacheTest, AbsentResultIsRememberedToo) {
    answer.reset();
    EXPECT_FALSE(ask(5, kBucket));
    answer = TopocentricResult{};
    EXPECT_FALSE(ask(5, kBucket));
    EXPECT_EQ(asked.size(), 1u);
}

}  // namespace
}  // namespace veloran
