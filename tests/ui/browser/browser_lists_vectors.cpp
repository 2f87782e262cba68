#include "elements/builtin_groups.h"
#include "elements/user_tle_source.h"
#include "support/vectors.h"
#include "ui/browser/browser_lists.h"

namespace veloran::test {
namespace {

using boost::json::array;
using boost::json::object;
using boost::json::value;

constexpr const char* kFile = "data/satellite_lists.json";

std::vector<SatellitePtr> catalogue(const array& entries) {
    std::vector<SatellitePtr> satellites;
    for (const value& entry : entries) {
        const object& body = entry.as_object();
        expectKnownMembers(body, {"id", "name", "sources"}, kFile);
        auto satellite = std::make_shared<Satellite>(std::string(body.at("name").as_string()),
                                                     body.at("id").as_int64());
        for (const value& source : body.at("sources").as_array()) {
            satellite->sources.insert(std::string(source.as_string()));
        }
        satellites.push_back(std::move(satellite));
    }
    return satellites;
}

std::vector<TLECategory> groups(const array& userSources) {
    std::vector<TLECategory> all;
    for (const BuiltinGroup& group : builtinGroups()) {
        all.push_back({group.key, "", group.description, group.section});
    }
    for (const value& name : userSources) {
        all.push_back(UserTLESource{"", std::string(name.as_string()), ""}.asCategory());
    }
    return all;
}

array ids(const std::vector<SatellitePtr>& satellites) {
    array result;
    for (const SatellitePtr& s : satellites) result.push_back(s->id);
    return result;
}

array sectionValues(const std::vector<BrowserSection>& sections) {
    array result;
    for (const BrowserSection& s : sections) {
        result.push_back(object{{"key", s.key}, {"label", s.label}, {"ids", ids(s.sats)}});
    }
    return result;
}

TEST(SatelliteListsVectors, ListsOfTheBrowser) {
    int lists = 0;
    forEachCase(loadVectors(kFile), kFile, "cases", [&lists](const object& c) {
        if (c.at("function").as_string() != "browser") return;
        expectKnownMembers(c,
                           {"id", "note", "function", "satellites", "search", "userSources",
                            "filtered", "quickList", "sections", "uncategorized"},
                           kFile);
        const auto stored = catalogue(c.at("satellites").as_array());
        const std::string_view search = c.at("search").as_string();
        const auto filtered = SatelliteSearch(sortedByName(stored)).matches(search);
        EXPECT_EQ(ids(filtered), c.at("filtered").as_array()) << "filtered";
        EXPECT_EQ(ids(SatelliteSearch(stored).matches(search)), c.at("quickList").as_array())
            << "quickList";
        EXPECT_EQ(
            sectionValues(orderedCategories(filtered, groups(c.at("userSources").as_array()))),
            c.at("sections").as_array())
            << "sections";
        EXPECT_EQ(ids(uncategorizedSats(filtered)), c.at("uncategorized").as_array())
            << "uncategorized";
        ++lists;
    });
    EXPECT_GT(lists, 0);
}

}  // namespace
}  // namespace veloran::test
