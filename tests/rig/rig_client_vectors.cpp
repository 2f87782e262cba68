#include <gtest/gtest.h>

#include "rig_script.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

namespace json = boost::json;

/// `order` does not fix the place of status reports among what the clock brings.
json::array withoutStatus(const json::array& order) {
    json::array rest;
    for (const auto& call : order) {
        if (call.at(0) != "status") rest.push_back(call);
    }
    return rest;
}

void compare(json::object actual, const json::object& expected, bool isAdvance) {
    expectKnownMembers(expected,
                       {"sent", "codes", "mode", "armed", "lost", "status", "attempts", "cancels",
                        "order", "state"},
                       "entry");
    if (isAdvance) actual["order"] = withoutStatus(actual["order"].as_array());
    for (const auto& [key, value] : expected) {
        auto wanted = value;
        if (isAdvance && key == "order") wanted = withoutStatus(value.as_array());
        EXPECT_EQ(actual[key], wanted) << "field " << key;
    }
}

void checkCase(const json::object& testCase, bool reportsCancel) {
    expectKnownMembers(testCase, {"id", "note", "script", "expected"}, "case");
    const auto& script = testCase.at("script").as_array();
    const auto& expected = testCase.at("expected").as_array();
    ASSERT_EQ(script.size(), expected.size());
    RigScript client(reportsCancel);
    for (std::size_t i = 0; i < script.size(); ++i) {
        const auto& step = script[i].as_object();
        SCOPED_TRACE("step " + std::to_string(i) + " " + json::serialize(step));
        compare(client.play(step), expected[i].as_object(), step.at("do") == "advance");
    }
}

void checkAll(bool reportsCancel) {
    forEachCase(loadVectors("data/rig_client.json"), "data/rig_client.json", "cases",
                [&](const json::object& testCase) { checkCase(testCase, reportsCancel); });
}

TEST(RigClientVectors, AllCasesWhenAConnectionReportsThatItWasCancelled) {
    checkAll(true);
}

TEST(RigClientVectors, AllCasesWhenACancelledConnectionStaysSilent) {
    checkAll(false);
}

}  // namespace
}  // namespace veloran::test
