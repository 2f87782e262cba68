#include <gtest/gtest.h>

#include "channel_json.h"

namespace veloran::test {
namespace {

namespace json = boost::json;

void checkCase(const json::object& testCase) {
    expectKnownMembers(
        testCase,
        {"id", "note", "json", "expected", "centerFreqHz", "displayFreqMHz", "label", "encoded"},
        "case");
    const auto list = "[" + std::string(testCase.at("json").as_string()) + "]";
    const auto decoded = decodeTransmitters(list);
    if (testCase.at("expected").is_null()) {
        EXPECT_FALSE(decoded.has_value()) << "expected";
        return;
    }
    ASSERT_TRUE(decoded && decoded->size() == 1) << "expected";
    const auto& channel = decoded->front();
    EXPECT_EQ(channelJson(channel), testCase.at("expected").as_object()) << "expected";
    EXPECT_TRUE(closeTo(channel.centerFreqHz(), number(testCase.at("centerFreqHz"))))
        << "centerFreqHz";
    EXPECT_EQ(channel.displayFreqMHz(), testCase.at("displayFreqMHz").as_string())
        << "displayFreqMHz";
    EXPECT_EQ(channel.label(), testCase.at("label").as_string()) << "label";
    const auto encoded = json::parse(encodeTransmitters({channel}));
    ASSERT_EQ(encoded.as_array().size(), 1U) << "encoded";
    json::object numbersAsDoubles = encoded.at(0).as_object();
    for (auto& member : numbersAsDoubles) {
        if (member.value().is_number()) member.value() = number(member.value());
    }
    EXPECT_EQ(numbersAsDoubles, testCase.at("encoded").as_object()) << "encoded";
}

TEST(TransmitterDecodeVectors, AllCases) {
    forEachCase(loadVectors("data/transmitter_decode.json"), "data/transmitter_decode.json",
                "cases", checkCase);
}

}  // namespace
}  // namespace veloran::test
