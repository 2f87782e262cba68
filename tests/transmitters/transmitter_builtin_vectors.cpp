#include <gtest/gtest.h>

#include "channel_json.h"

namespace veloran::test {
namespace {

TEST(TransmitterBuiltinVectors, AllCases) {
    auto map = builtinTransmitters();
    forEachCase(loadVectors("data/transmitter_builtin.json"), "data/transmitter_builtin.json",
                "cases", [&](const boost::json::object& testCase) {
                    expectKnownMembers(testCase, {"id", "note", "noradId", "transmitters"}, "case");
                    const auto noradId = testCase.at("noradId").as_int64();
                    EXPECT_EQ(channelsJson(map[noradId]), testCase.at("transmitters").as_array())
                        << "transmitters";
                    map.erase(noradId);
                });
    EXPECT_TRUE(map.empty()) << "the program has satellites that the file does not have";
}

}  // namespace
}  // namespace veloran::test
