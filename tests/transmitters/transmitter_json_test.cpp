#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "transmitters/transmitter.h"

namespace veloran::test {
namespace {

/// The one channel made of these members, besides the three required ones; absent if refused.
std::optional<Transmitter> decodeWith(const std::string& members) {
    const auto list = decodeTransmitters(R"([{"mode":"FM","description":"x","direction":"down")" +
                                         members + "}]");
    return list ? std::optional(list->at(0)) : std::nullopt;
}

std::string database(const std::string& transmitters) {
    return R"({"satellites":[{"name":"A","norad_id":5,"transmitters":)" + transmitters + "}]}";
}

TEST(TransmitterJson, ThreeTextsMakeAChannelWithoutFrequency) {
    const auto channel = decodeWith("");
    ASSERT_TRUE(channel);
    EXPECT_EQ(channel->centerFreqHz(), 0);
    EXPECT_FALSE(channel->inverting);
    EXPECT_FALSE(channel->ctcss);
}

TEST(TransmitterJson, InvertingThatIsNoBooleanReadsAsFalse) {
    for (const auto* value : {"\"true\"", "1", "null", "[true]", "{}"}) {
        const auto channel = decodeWith(std::string(R"(,"inverting":)") + value);
        ASSERT_TRUE(channel) << value;
        EXPECT_FALSE(channel->inverting) << value;
    }
    EXPECT_TRUE(decodeWith(R"(,"inverting":true)")->inverting);
}

TEST(TransmitterJson, NullCountsAsAbsentForWhatMayBeAbsent) {
    const auto channel =
        decodeWith(R"(,"freq":null,"freq_low":null,"freq_high":null,"ctcss":null)");
    ASSERT_TRUE(channel);
    EXPECT_FALSE(channel->freq || channel->freqLow || channel->freqHigh || channel->ctcss);
}

TEST(TransmitterJson, OneBadChannelRefusesTheWholeFile) {
    const std::string good = R"({"mode":"FM","description":"x","direction":"up"})";
    const std::string bad = R"({"description":"x","direction":"up"})";
    EXPECT_TRUE(decodeTransmitterDatabase(database("[" + good + "]")));
    EXPECT_FALSE(decodeTransmitterDatabase(database("[" + good + "," + bad + "]")));
    EXPECT_FALSE(decodeTransmitters("[" + good + "," + bad + "]"));
}

TEST(TransmitterJson, NumbersNoRadioCouldTakeAreRefused) {
    for (const auto* key : {"freq", "freq_low", "freq_high"}) {
        for (const auto* value : {"1e999", "-1e999", "9223372036854775808", "-1e300", "1e19"}) {
            EXPECT_FALSE(decodeWith(std::string(",\"") + key + "\":" + value)) << key << value;
        }
        EXPECT_TRUE(decodeWith(std::string(",\"") + key + "\":9.2e18")) << key;
    }
    EXPECT_FALSE(decodeWith(R"(,"ctcss":1e999)"));
    // The edges together stay within 64 bits, too.
    const auto widest = decodeWith(R"(,"freq_low":9.2e18,"freq_high":9.2e18)");
    ASSERT_TRUE(widest);
    EXPECT_EQ(widest->centerFreqHz(), 9.2e18);
}

TEST(TransmitterJson, TheCatalogueNumberIsAWholeNumberWithinSixtyFourBits) {
    const auto decode = [](const std::string& number) {
        return decodeTransmitterDatabase(R"({"satellites":[{"name":"A","norad_id":)" + number +
                                         R"(,"transmitters":[]}]})");
    };
    EXPECT_TRUE(decode("-9223372036854775808"));
    EXPECT_EQ(decode("25544.0")->begin()->first, 25544);
    for (const auto* number : {"5.5", "9223372036854775808", "1e999", "true", "\"5\"", "null"}) {
        EXPECT_FALSE(decode(number)) << number;
    }
}

TEST(TransmitterJson, AListLongerThanAnySatelliteHasIsRefused) {
    const std::vector<Transmitter> most(kMaxTransmitters);
    EXPECT_TRUE(decodeTransmitters(encodeTransmitters(most)));
    const std::vector<Transmitter> more(kMaxTransmitters + 1);
    EXPECT_FALSE(decodeTransmitters(encodeTransmitters(more)));
    EXPECT_FALSE(decodeTransmitterDatabase(database(encodeTransmitters(more))));
}

TEST(TransmitterJson, GarbageAndBombsAreRefused) {
    const std::string opening(10'000'000, '[');
    std::string objects;
    for (int i = 0; i < 1'000'000; ++i) objects += R"({"satellites":)";
    for (const auto& text : {opening, objects, std::string(50'000'000, '\xFF'),
                             std::string(50'000'000, ' '), std::string("[{"), std::string("[]]"),
                             std::string("nul"), std::string("[\"\xFF\"]"), std::string()}) {
        EXPECT_FALSE(decodeTransmitters(text)) << text.substr(0, 20);
        EXPECT_FALSE(decodeTransmitterDatabase(text)) << text.substr(0, 20);
    }
}

TEST(TransmitterJson, KeysAreWrittenInOrderAndAbsentValuesLeftOut) {
    Transmitter channel;
    channel.freq = 145800000;
    channel.freqLow = 1.5;
    channel.freqHigh = 1e300;
    channel.mode = "FM";
    channel.description = "say \"hi\"\n\\ü";
    channel.direction = "down";
    channel.ctcss = 67.1;
    EXPECT_EQ(encodeTransmitters({channel, Transmitter()}),
              R"([{"freq":145800000,"freq_low":1.5,"freq_high":1e+300,"mode":"FM",)"
              R"("description":"say \"hi\"\n\\ü","direction":"down","inverting":false,)"
              R"("ctcss":67.1},{"mode":"","description":"","direction":"","inverting":false}])");
    EXPECT_EQ(encodeTransmitters({}), "[]");
}

TEST(TransmitterJson, WhatIsWrittenReadsBackToTheSameValues) {
    std::mt19937_64 random(20261121);
    std::uniform_real_distribution<double> hertz(-9e18, 9e18);
    std::uniform_int_distribution<int> choice(0, 3);
    std::vector<Transmitter> channels(500);
    for (auto& channel : channels) {
        if (choice(random)) channel.freq = hertz(random);
        if (choice(random)) channel.freqLow = hertz(random) * 1e-10;
        if (choice(random)) channel.freqHigh = hertz(random) * 1e-300;
        if (choice(random)) channel.ctcss = hertz(random) * 1e280;
        channel.inverting = choice(random) == 0;
        channel.mode = std::string("mode\t") + static_cast<char>('A' + choice(random));
        channel.description = "\x01 \x7f / 🛰";
        channel.direction = choice(random) ? "down" : "up";
    }
    auto read = decodeTransmitters(encodeTransmitters(channels));
    ASSERT_TRUE(read && read->size() == channels.size());
    for (std::size_t i = 0; i < channels.size(); ++i) {
        EXPECT_NE(read->at(i).id, channels[i].id);
        read->at(i).id = channels[i].id;
        EXPECT_EQ(read->at(i), channels[i]) << "channel " << i;
    }
}

}  // namespace
}  // namespace veloran::test
