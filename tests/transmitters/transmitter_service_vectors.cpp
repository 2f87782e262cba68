#include <gtest/gtest.h>

#include "channel_json.h"
#include "transmitters/satnogs.h"

namespace veloran::test {
namespace {

namespace json = boost::json;

/// Numbers without channels say nothing either way.
json::array byNumberJson(const TransmitterMap& byNumber) {
    json::array array;
    for (const auto& [noradId, channels] : byNumber) {
        if (channels.empty()) continue;
        array.push_back({{"noradId", noradId}, {"transmitters", channelsJson(channels)}});
    }
    return array;
}

void checkCase(const json::object& testCase) {
    expectKnownMembers(testCase, {"id", "note", "json", "expected", "byNumber"}, "case");
    const std::string_view answer = testCase.at("json").as_string();
    EXPECT_EQ(channelsJson(channelsOfAnswer(answer)), testCase.at("expected").as_array())
        << "expected";
    EXPECT_EQ(byNumberJson(channelsByNumber(answer)), testCase.at("byNumber").as_array())
        << "byNumber";
}

TEST(TransmitterServiceVectors, AllCases) {
    forEachCase(loadVectors("data/transmitter_service.json"), "data/transmitter_service.json",
                "cases", checkCase);
}

}  // namespace
}  // namespace veloran::test
