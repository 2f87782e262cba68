#include "core/default_satellites.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

constexpr const char* kFile = "data/satellite_lists.json";

TEST(SatelliteListsVectors, DefaultsAreFoundByName) {
    int names = 0;
    forEachCase(loadVectors(kFile), kFile, "cases", [&names](const boost::json::object& c) {
        const std::string_view function = c.at("function").as_string();
        if (function == "browser") return;  // lists of a view
        ASSERT_EQ(function, "matchesDefault");
        expectKnownMembers(c, {"id", "note", "function", "name", "expected"}, kFile);
        EXPECT_EQ(matchesDefault(c.at("name").as_string()), c.at("expected").as_bool());
        ++names;
    });
    EXPECT_GT(names, 0);
}

}  // namespace
}  // namespace veloran::test
