#include "sample_catalogue/sample_catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>

#include "elements/omm_parser.h"
#include "transmitters/transmitter.h"

namespace veloran {
namespace {

constexpr Instant kSomeDay{793843200.0};  // 2026-02-27 00:00 UTC

std::string content(const char* path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<SampleSatellite> sample() {
    return readSampleCatalogue(content(VELORAN_SAMPLE_SATELLITES))
        .value_or(std::vector<SampleSatellite>{});
}

TEST(SampleCatalogue, HoldsAtLeastTwentyFiveBodiesWithOneNumberEach) {
    std::set<std::int64_t> ids;
    for (const auto& satellite : sample()) ids.insert(satellite.noradId);
    EXPECT_GE(ids.size(), 25u);
    EXPECT_EQ(ids.size(), sample().size());
    for (const std::int64_t id : {25544, 27607, 44909, 53106, 7530, 33591}) {
        EXPECT_TRUE(ids.contains(id)) << id;
    }
}

TEST(SampleCatalogue, EveryGroupReadsAsMessagesOfTheDay) {
    std::size_t total = 0;
    for (const char* group : {"amateur", "stations", "weather"}) {
        const auto sets = OMMParser::parse(ommArray(sample(), group, kSomeDay));
        ASSERT_FALSE(sets.empty()) << group;
        total += sets.size();
        for (const auto& set : sets) {
            EXPECT_EQ(set.epochYear, 2026) << set.name;
            EXPECT_DOUBLE_EQ(set.epochDays, 58.0) << set.name;
        }
    }
    EXPECT_EQ(total, sample().size() + 1);  // the ISS stands in two groups
}

TEST(SampleCatalogue, ChannelsAreThoseOfSampleSatellites) {
    const auto channels = decodeTransmitterDatabase(content(VELORAN_SAMPLE_TRANSMITTERS));
    ASSERT_TRUE(channels);
    EXPECT_GE(channels->size(), 25u);
    const auto satellites = sample();
    for (const auto& [noradId, list] : *channels) {
        EXPECT_NE(std::ranges::find(satellites, noradId, &SampleSatellite::noradId),
                  satellites.end())
            << noradId;
        EXPECT_FALSE(list.empty()) << noradId;
    }
}

TEST(SampleCatalogue, GroupWithoutMembersIsAnEmptyArray) {
    EXPECT_EQ(ommArray(sample(), "galileo", kSomeDay), "[]");
}

TEST(SampleCatalogue, SunSynchronousNodeFollowsTheSunAround) {
    // 360 degrees in a tropical year; the sample figures are good to a few percent.
    for (const auto& satellite : sample()) {
        if (satellite.name != "METOP-B") continue;
        const double moved =
            carriedTo(satellite, Instant{757382400.0 + 100 * 86400.0}).raan - satellite.raan;
        EXPECT_NEAR(moved, 98.6, 2.0);
        return;
    }
    FAIL() << "METOP-B is missing";
}

TEST(SampleCatalogue, DaysBeforeTheCatalogueKeepAnglesInOneTurn) {
    for (const auto& satellite : sample()) {
        const auto carried = carriedTo(satellite, Instant{700000000.0});
        for (const double angle : {carried.raan, carried.argPerigee, carried.meanAnomaly}) {
            EXPECT_GE(angle, 0.0) << satellite.name;
            EXPECT_LT(angle, 360.0) << satellite.name;
        }
    }
}

TEST(SampleCatalogue, BadLinesMakeTheFileUnreadable) {
    const std::string good = "A,1,2020-001A,51.6,0.001,15.5,1,2,3,0.0001,amateur\n";
    EXPECT_EQ(readSampleCatalogue("# comment\n\n" + good).value().size(), 1u);
    EXPECT_FALSE(readSampleCatalogue(good + "B,2\n"));
    EXPECT_FALSE(readSampleCatalogue("A,x,2020-001A,51.6,0.001,15.5,1,2,3,0.0001,amateur"));
    EXPECT_FALSE(readSampleCatalogue("A,1,2020-001A,51.6,0.001,0,1,2,3,0.0001,amateur"));
    EXPECT_FALSE(readSampleCatalogue("A\",1,2020-001A,51.6,0.001,15.5,1,2,3,0.0001,amateur"));
}

}  // namespace
}  // namespace veloran
