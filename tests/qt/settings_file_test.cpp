#include "qt/settings_file.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace veloran {
namespace {

using Texts = std::vector<std::string>;
using Integers = std::vector<std::int64_t>;

SettingValues read(std::string_view text) {
    const auto stored = parseSettings(text);
    return stored ? readableSettings(*stored) : SettingValues{};
}

std::string written(const SettingChanges& changes, std::string_view before = "{}") {
    auto stored = parseSettings(before);
    if (!stored) return "no settings";
    applyChanges(changes, *stored);
    return settingsText(*stored);
}

SettingValues throughTheFile(const SettingValue& value) {
    return read(written({{"key", value}}));
}

TEST(SettingsFile, IsOneMemberALineSortedByKey) {
    const SettingChanges changes{{"obsLon", -84.34},
                                 {"obsAlt", 300.0},
                                 {"rigPort", std::int64_t{4532}},
                                 {"obsName", std::string("Home \"QTH\"\n")},
                                 {"polarBearingLine", true},
                                 {"selectedSatIds", Integers{25544, -1}},
                                 {"tleCategories", Texts{"amateur", "stations"}}};
    EXPECT_EQ(written(changes, R"({"z": 1, "a": 2})"), R"({
  "a": 2,
  "obsAlt": 300.0,
  "obsLon": -84.34,
  "obsName": "Home \"QTH\"\n",
  "polarBearingLine": true,
  "rigPort": 4532,
  "selectedSatIds": [25544,-1],
  "tleCategories": ["amateur","stations"],
  "z": 1
}
)");
}

TEST(SettingsFile, EveryKindComesBackAsItWas) {
    const std::vector<SettingValue> values{true,
                                           false,
                                           std::int64_t{10},
                                           std::numeric_limits<std::int64_t>::min(),
                                           10.0,
                                           -0.0,
                                           1e20,
                                           5e-324,
                                           95.370408559370731,
                                           -15.075161560223165,
                                           std::string(),
                                           std::string("a\0b \xc3\xa9 \xf0\x9f\x9b\xb0", 11),
                                           Texts{"", "x"},
                                           Integers{1, -2}};
    for (const auto& value : values) {
        EXPECT_EQ(throughTheFile(value), (SettingValues{{"key", value}}))
            << "kind " << value.index();
    }
}

TEST(SettingsFile, ValuesThatAFileCannotHoldTakeTheirKeyAway) {
    const std::vector<SettingValue> values{std::nan(""),
                                           std::numeric_limits<double>::infinity(),
                                           std::string("\xff"),
                                           Texts{"fine", "\xc3"},
                                           std::string(kLargestSetting + 1, 'x'),
                                           Integers(kLargestSetting, 1)};
    for (const auto& value : values) {
        EXPECT_EQ(written({{"key", value}}, R"({"key": 1})"), "{\n}\n") << "kind " << value.index();
    }
    EXPECT_EQ(written({{"\xff", true}}), "{\n}\n");
    EXPECT_EQ(written({{"key", std::nullopt}}, R"({"key": 1})"), "{\n}\n");
}

TEST(SettingsFile, MembersOfOtherKindsReadAsMissingAndPassThroughARewrite) {
    const auto strange = R"({
  "list": [1,"a"],
  "lists": [[1]],
  "members": {"deep":[true]},
  "mixed": [1,true],
  "nothing": null,
  "wide": 18446744073709551615
}
)";
    EXPECT_EQ(read(strange), SettingValues{});
    EXPECT_EQ(written({{"missing", std::nullopt}}, strange), strange);
}

TEST(SettingsFile, NumbersBeyondADoubleReadAsMissing) {
    EXPECT_EQ(read(R"({"a": 1e999, "b": -1e999, "c": 1.5})"), (SettingValues{{"c", 1.5}}));
    EXPECT_EQ(read(written({}, R"({"a": 1e999})")), SettingValues{});
}

TEST(SettingsFile, NumbersBeyondADoubleLeaveTheFileReadableWhenItIsRewritten) {
    const auto text = written({{"n", 1.0}}, R"({"a":1e400,"b":[-1e400,{"c":1e400}],"d":2.5})");
    EXPECT_EQ(text,
              "{\n  \"a\": 1e999,\n  \"b\": [-1e999,{\"c\":1e999}],\n  \"d\": 2.5,\n"
              "  \"n\": 1.0\n}\n");
    EXPECT_EQ(read(text), (SettingValues{{"d", 2.5}, {"n", 1.0}}));
}

TEST(SettingsFile, AValueBeyondTheLimitReadsAsMissingAndTheOthersStay) {
    const std::string large(50'000'000, 'x');
    const auto text =
        R"({"obsName": ")" + large + R"(", "rigPort": 4532, "list": [")" + large + "\"]}";
    EXPECT_EQ(read(text), (SettingValues{{"rigPort", std::int64_t{4532}}}));
}

TEST(SettingsFile, TextThatIsNoJsonObjectIsNoSettingsFile) {
    for (const auto* text :
         {"", "[]", "7", "{", "{} {}", "{\"a\": nan}", "{'a': 1}", "\xff\xfe{}"}) {
        EXPECT_FALSE(parseSettings(text)) << text;
    }
    EXPECT_FALSE(parseSettings(std::string_view("\0\0\0\0", 4)));
    EXPECT_FALSE(parseSettings(R"({"a": )" + std::string(1'000'000, '[')));
}

TEST(SettingsFile, OfEqualKeysTheLastCounts) {
    EXPECT_EQ(read(R"({"a": 1, "a": 2})"), (SettingValues{{"a", std::int64_t{2}}}));
}

}  // namespace
}  // namespace veloran
