#include <gtest/gtest.h>

#include "channel_json.h"
#include "transmitters/transponder_pair.h"

namespace veloran::test {
namespace {

namespace json = boost::json;

json::object selectionJson(const std::vector<Transmitter>& list,
                           const TransmitterSelection& selection) {
    json::object object{{"downlink", indexIn(list, selection.downlink())},
                        {"uplink", indexIn(list, selection.uplink())},
                        {"id", selection.id()},
                        {"label", selection.label()}};
    if (const auto* pair = selection.pair()) {
        object["kind"] = "pair";
        object["inverting"] = pair->inverting();
    } else {
        object["kind"] = "single";
        object["index"] = indexIn(list, *selection.single());
    }
    return object;
}

void checkPairing(const json::object& testCase) {
    expectKnownMembers(testCase, {"id", "note", "transmitters", "expected"}, "case");
    const auto list = channelsFrom(testCase.at("transmitters"));
    const auto selections = buildTransmitterSelections(list);
    const auto& expected = testCase.at("expected").as_array();
    ASSERT_EQ(selections.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(selectionJson(list, selections[i]), expected[i].as_object()) << "expected " << i;
    }
}

TEST(PairingVectors, AllCases) {
    forEachCase(loadVectors("data/pairing.json"), "data/pairing.json", "cases", checkPairing);
}

}  // namespace
}  // namespace veloran::test
