#include "rig/rig_protocol_mode.h"

#include <gtest/gtest.h>

namespace veloran::test {
namespace {

RigProtocolMode modeFrom(std::int64_t code, std::initializer_list<std::string_view> texts) {
    ReplyLines lines;
    for (const auto text : texts) lines.add(text);
    return modeFromCapabilities(code, lines);
}

TEST(RigProtocolMode, ShownTextsReadBackAndOthersGiveNothing) {
    EXPECT_EQ(rawValue(RigProtocolMode::unknown), "—");
    EXPECT_EQ(rawValue(RigProtocolMode::classic), "Classic");
    EXPECT_EQ(rawValue(RigProtocolMode::satProtoV1), "SAT_PROTO v1");
    EXPECT_EQ(rigProtocolModeFrom("—"), RigProtocolMode::unknown);
    EXPECT_EQ(rigProtocolModeFrom("Classic"), RigProtocolMode::classic);
    EXPECT_EQ(rigProtocolModeFrom("SAT_PROTO v1"), RigProtocolMode::satProtoV1);
    for (const auto* text : {"", "classic", "SAT_PROTO v2", "-"}) {
        EXPECT_EQ(rigProtocolModeFrom(text), std::nullopt) << text;
    }
}

TEST(RigProtocolMode, VersionOneAndAboveIsTheExtension) {
    EXPECT_EQ(modeFrom(0, {"SAT_PROTO=1"}), RigProtocolMode::satProtoV1);
    EXPECT_EQ(modeFrom(0, {"MODEL=X", "SAT_PROTO=2"}), RigProtocolMode::satProtoV1);
}

TEST(RigProtocolMode, NoUsableVersionIsClassic) {
    for (const auto* line : {"SAT_PROTO=0", "SAT_PROTO=-1", "SAT_PROTO=abc",
                             "SAT_PROTO=", "SAT_PROTO=99999999999999999999", "sat_proto=1", ""}) {
        EXPECT_EQ(modeFrom(0, {line}), RigProtocolMode::classic) << line;
    }
    EXPECT_EQ(modeFrom(0, {}), RigProtocolMode::classic);
}

TEST(RigProtocolMode, TheCodeIsLookedAtBeforeTheVersion) {
    EXPECT_EQ(modeFrom(-1, {"SAT_PROTO=1"}), RigProtocolMode::classic);
    EXPECT_EQ(modeFrom(-999, {"SAT_PROTO=1"}), RigProtocolMode::classic);
}

TEST(RigProtocolMode, TheFirstVersionLineDecides) {
    EXPECT_EQ(modeFrom(0, {"SAT_PROTO=0", "SAT_PROTO=1"}), RigProtocolMode::classic);
    EXPECT_EQ(modeFrom(0, {"SAT_PROTO=1", "SAT_PROTO=0"}), RigProtocolMode::satProtoV1);
    EXPECT_EQ(modeFrom(0, {"SAT_PROTO=x", "SAT_PROTO=1"}), RigProtocolMode::classic);
}

}  // namespace
}  // namespace veloran::test
