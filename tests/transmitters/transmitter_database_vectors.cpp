#include <gtest/gtest.h>

#include "channel_json.h"

namespace veloran::test {
namespace {

namespace json = boost::json;

json::value mapJson(const std::optional<TransmitterMap>& map) {
    if (!map) return nullptr;
    json::array entries;
    for (const auto& [noradId, channels] : *map) {
        entries.push_back(
            json::object{{"noradId", noradId}, {"transmitters", channelsJson(channels)}});
    }
    return entries;
}

void checkCase(const json::object& testCase) {
    expectKnownMembers(testCase, {"id", "note", "json", "expected"}, "case");
    EXPECT_EQ(mapJson(decodeTransmitterDatabase(testCase.at("json").as_string())),
              testCase.at("expected"))
        << "expected";
}

TEST(TransmitterDatabaseVectors, AllCases) {
    forEachCase(loadVectors("data/transmitter_database.json"), "data/transmitter_database.json",
                "cases", checkCase);
}

}  // namespace
}  // namespace veloran::test
