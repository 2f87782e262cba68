#include <gtest/gtest.h>

#include "rig/rig_protocol_mode.h"
#include "rig_names.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

void checkCase(const boost::json::object& testCase) {
    expectKnownMembers(testCase, {"id", "note", "code", "lines", "expected"}, "case");
    ReplyLines lines;
    for (const auto& line : testCase.at("lines").as_array()) {
        lines.add(std::string_view(line.as_string()));
    }
    EXPECT_EQ(codeName(modeFromCapabilities(testCase.at("code").as_int64(), lines)),
              testCase.at("expected").as_string())
        << "expected";
}

TEST(CapabilityAnswerVectors, AllCases) {
    forEachCase(loadVectors("data/capability_answer.json"), "data/capability_answer.json", "cases",
                checkCase);
}

}  // namespace
}  // namespace veloran::test
