#include "core/maidenhead.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

constexpr const char* kFile = "data/maidenhead.json";

void expectLocator(const boost::json::object& c) {
    expectKnownMembers(c, {"id", "note", "function", "lat", "lon", "expected"}, kFile);
    EXPECT_EQ(toMaidenhead(number(c.at("lat")), number(c.at("lon"))),
              std::string_view(c.at("expected").as_string()));
}

void expectPosition(const boost::json::object& c) {
    expectKnownMembers(c, {"id", "note", "function", "text", "expected"}, kFile);
    const std::string_view text = c.at("text").as_string();
    const auto& expected = c.at("expected");
    EXPECT_TRUE(expected.is_null() || readsAsLocator(text));
    const auto position = fromMaidenhead(text);
    ASSERT_EQ(position.has_value(), !expected.is_null());
    if (!position) return;
    expectKnownMembers(expected.as_object(), {"lat", "lon"}, kFile);
    EXPECT_TRUE(closeTo(position->lat, number(expected.at("lat")))) << "field lat";
    EXPECT_TRUE(closeTo(position->lon, number(expected.at("lon")))) << "field lon";
}

TEST(MaidenheadVectors, PositionsAndLocators) {
    forEachCase(loadVectors(kFile), kFile, "cases", [](const boost::json::object& c) {
        const std::string_view function = c.at("function").as_string();
        if (function == "toMaidenhead") {
            expectLocator(c);
        } else if (function == "fromMaidenhead") {
            expectPosition(c);
        } else {
            FAIL() << "unknown function " << function;
        }
    });
}

}  // namespace
}  // namespace veloran::test
