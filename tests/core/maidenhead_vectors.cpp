#include "core/maidenhead.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

TEST(MaidenheadVectors, PositionsToLocators) {
    const auto file = loadVectors("data/maidenhead.json");
    forEachCase(file, "maidenhead.json", "cases", [](const boost::json::object& c) {
        expectKnownMembers(c, {"id", "note", "function", "lat", "lon", "text", "expected"}, "case");
        if (c.at("function").as_string() != "toMaidenhead") return;
        EXPECT_EQ(toMaidenhead(number(c.at("lat")), number(c.at("lon"))),
                  std::string_view(c.at("expected").as_string()));
    });
}

}  // namespace
}  // namespace veloran::test
