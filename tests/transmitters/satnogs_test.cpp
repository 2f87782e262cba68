#include "transmitters/satnogs.h"

#include <gmock/gmock.h>

#include "support/simulated_machine.h"

namespace veloran::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

SatNOGSTransmitter live(std::string description) {
    SatNOGSTransmitter record;
    record.description = std::move(description);
    record.alive = true;
    return record;
}

std::vector<std::string> descriptions(const std::vector<Transmitter>& channels) {
    std::vector<std::string> result;
    for (const auto& channel : channels) result.push_back(channel.description);
    return result;
}

TEST(SatNOGSRecord, EqualEdgesWithoutUplinkGiveOneSpotWithoutSuffix) {
    auto record = live("Beacon");
    record.downlink_low = 145800000;
    record.downlink_high = 145800000;
    const auto channels = convertTransmitterEntry(record);
    ASSERT_EQ(channels.size(), 1u);
    EXPECT_EQ(channels[0].freq, 145800000);
    EXPECT_FALSE(channels[0].freqLow || channels[0].freqHigh);
    EXPECT_EQ(channels[0].description, "Beacon");
    EXPECT_EQ(channels[0].direction, "down");
    EXPECT_FALSE(channels[0].inverting);
}

TEST(SatNOGSRecord, InvertingTransponderGivesTwoInvertingRangesWithSuffixes) {
    auto record = live("Transponder");
    record.downlink_low = 435610000;
    record.downlink_high = 435670000;
    record.uplink_low = 145935000;
    record.uplink_high = 145995000;
    record.invert = true;
    record.mode = "SSB";
    const auto channels = convertTransmitterEntry(record);
    ASSERT_THAT(descriptions(channels), ElementsAre("Transponder (DL)", "Transponder (UL)"));
    EXPECT_EQ(channels[0].freqLow, 435610000);
    EXPECT_EQ(channels[0].freqHigh, 435670000);
    EXPECT_EQ(channels[1].freqLow, 145935000);
    EXPECT_EQ(channels[1].freqHigh, 145995000);
    EXPECT_EQ(channels[1].direction, "up");
    for (const auto& channel : channels) {
        EXPECT_FALSE(channel.freq);
        EXPECT_FALSE(channel.ctcss);
        EXPECT_TRUE(channel.inverting);
        EXPECT_EQ(channel.mode, "SSB");
    }
}

TEST(SatNOGSRecord, WithoutModeItIsFM) {
    auto record = live("");
    record.uplink_low = 145935000;
    EXPECT_EQ(convertTransmitterEntry(record).at(0).mode, "FM");
}

TEST(SatNOGSRecord, HighEdgesAloneGiveNothing) {
    auto record = live("");
    record.downlink_high = 435670000;
    record.uplink_high = 145995000;
    EXPECT_THAT(convertTransmitterEntry(record), IsEmpty());
}

TEST(SatNOGSAnswer, DeadRecordIsLeftOutWithItsUplink) {
    const auto channels = channelsOfAnswer(
        R"([{"description":"dead","alive":false,"downlink_low":1,"uplink_low":2},
            {"description":"live","alive":true,"downlink_low":3}])");
    EXPECT_THAT(descriptions(channels), ElementsAre("live"));
}

TEST(SatNOGSAnswer, NullCountsAsAbsentButForDescriptionAndAlive) {
    EXPECT_EQ(channelsOfAnswer(R"([{"uuid":null,"description":"x","alive":true,"downlink_low":3,
        "downlink_high":null,"uplink_low":null,"uplink_high":null,"mode":null,"invert":null,
        "norad_cat_id":null,"type":null}])")
                  .size(),
              1u);
    EXPECT_FALSE(decodeServiceAnswer(R"([{"description":null,"alive":true}])"));
    EXPECT_FALSE(decodeServiceAnswer(R"([{"description":"x","alive":null}])"));
}

TEST(SatNOGSAnswer, FrequencyThatNoRadioCouldTakeSpoilsTheWholeAnswer) {
    for (const char* hz : {"1e300", "-9.3e18", "1e400"}) {
        const auto answer = R"([{"description":"good","alive":true,"downlink_low":1},
            {"description":"bad","alive":true,"downlink_low":)" +
                            std::string(hz) + "}]";
        EXPECT_FALSE(decodeServiceAnswer(answer)) << hz;
        EXPECT_THAT(channelsOfAnswer(answer), IsEmpty()) << hz;
    }
}

TEST(SatNOGSAnswer, MoreChannelsThanAFileMayHoldCountAsNoAnswer) {
    const auto answerOf = [](std::size_t records) {
        std::string answer;
        for (std::size_t i = 0; i < records; ++i) {
            answer += answer.empty() ? "[" : ",";
            answer += R"({"description":"","alive":true,"downlink_low":1,"norad_cat_id":5})";
        }
        return answer + "]";
    };
    EXPECT_EQ(channelsOfAnswer(answerOf(kMaxTransmitters)).size(), kMaxTransmitters);
    EXPECT_THAT(channelsOfAnswer(answerOf(kMaxTransmitters + 1)), IsEmpty());
    EXPECT_EQ(channelsByNumber(answerOf(kMaxTransmitters)).at(5).size(), kMaxTransmitters);
    EXPECT_THAT(channelsByNumber(answerOf(kMaxTransmitters + 1)), IsEmpty());
}

class SatNOGSFetchTest : public ::testing::Test {
  protected:
    std::vector<Transmitter> fetched(std::int64_t noradId) {
        std::optional<std::vector<Transmitter>> result;
        fetch.fetchTransmitters(noradId, [&](std::vector<Transmitter> list) {
            EXPECT_FALSE(result) << "called back twice";
            result = std::move(list);
        });
        EXPECT_FALSE(result) << "called back directly";
        machine.loop.runPosted();
        EXPECT_TRUE(result);
        return result.value_or(std::vector<Transmitter>{});
    }
    TransmitterMap allActive() {
        TransmitterMap result{{-99, {}}};
        fetch.fetchAllActive([&](TransmitterMap map) { result = std::move(map); });
        machine.loop.runPosted();
        return result;
    }

    SimulatedMachine machine;
    SatNOGSFetch fetch{machine.machine, "https://channels.test"};
    const std::string iss =
        "https://channels.test/api/transmitters/?format=json&satellite__norad_cat_id=25544";
    const std::string all = "https://channels.test/api/transmitters/?format=json&alive=true";
};

TEST_F(SatNOGSFetchTest, OneRequestBringsTheChannelsOfOneSatellite) {
    machine.http.answers[iss].body =
        R"([{"description":"a","alive":true,"downlink_low":1},
            {"description":"b","alive":true,"uplink_low":2}])";
    EXPECT_THAT(descriptions(fetched(25544)), ElementsAre("a", "b"));
    EXPECT_THAT(machine.http.requests, ElementsAre(iss));
}

TEST_F(SatNOGSFetchTest, TheSunIsAskedForByItsNegativeNumber) {
    fetched(-1);
    EXPECT_THAT(machine.http.requests, ElementsAre("https://channels.test/api/transmitters/"
                                                   "?format=json&satellite__norad_cat_id=-1"));
}

TEST_F(SatNOGSFetchTest, UnreachableServiceGivesAnEmptyList) {
    EXPECT_THAT(fetched(25544), IsEmpty());
}

TEST_F(SatNOGSFetchTest, AnswerThatIsNoListGivesAnEmptyList) {
    for (const char* body : {"", "<html>", "{}", R"({"detail":"Not found."})", "[1]", "[{}"}) {
        machine.http.answers[iss].body = body;
        EXPECT_THAT(fetched(25544), IsEmpty()) << body;
    }
}

TEST_F(SatNOGSFetchTest, AllActiveAreGroupedByNumberInOrder) {
    machine.http.answers[all].body =
        R"([{"description":"a","alive":true,"downlink_low":1,"norad_cat_id":7},
            {"description":"b","alive":true,"downlink_low":2,"norad_cat_id":5},
            {"description":"dead","alive":false,"downlink_low":2,"norad_cat_id":5},
            {"description":"nobody's","alive":true,"downlink_low":2},
            {"description":"c","alive":true,"downlink_low":3,"norad_cat_id":7}])";
    const auto map = allActive();
    ASSERT_EQ(map.size(), 2u);
    EXPECT_THAT(descriptions(map.at(7)), ElementsAre("a", "c"));
    EXPECT_THAT(descriptions(map.at(5)), ElementsAre("b"));
    EXPECT_THAT(machine.http.requests, ElementsAre(all));
}

TEST_F(SatNOGSFetchTest, AllActiveOfABrokenServiceAreNone) {
    EXPECT_THAT(allActive(), IsEmpty());
    machine.http.answers[all].body = "<html>";
    EXPECT_THAT(allActive(), IsEmpty());
}

}  // namespace
}  // namespace veloran::test
