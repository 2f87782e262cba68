#include <gtest/gtest.h>

#include "channel_json.h"
#include "transmitters/transponder_pair.h"

namespace veloran::test {
namespace {

namespace json = boost::json;

void checkUplink(const json::object& testCase) {
    expectKnownMembers(testCase,
                       {"id", "note", "transmitters", "selectedCenterHz", "uplinkIndex",
                        "pickerSelectedCenterHz", "pickerId"},
                       "case");
    const auto list = channelsFrom(testCase.at("transmitters"));
    EXPECT_EQ(indexIn(list, pairedUplink(list, number(testCase.at("selectedCenterHz")))),
              testCase.at("uplinkIndex"))
        << "uplinkIndex";
    const auto& shown = testCase.at("pickerSelectedCenterHz");
    EXPECT_EQ(shownSelectionId(buildTransmitterSelections(list),
                               shown.is_null() ? std::nullopt : std::optional(number(shown))),
              testCase.at("pickerId").as_string())
        << "pickerId";
}

TEST(PairingUplinkVectors, AllCases) {
    forEachCase(loadVectors("data/pairing_uplink.json"), "data/pairing_uplink.json", "cases",
                checkUplink);
}

}  // namespace
}  // namespace veloran::test
