#include <functional>
#include <map>
#include <set>

#include "core/pass_info.h"
#include "core/status_texts.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

using boost::json::array;
using boost::json::value;

std::size_t count(const value& argument) {
    return static_cast<std::size_t>(argument.as_int64());
}

using Format = std::function<value(const array& args)>;

/// The formats that live in the core; those of the views have their test beside them.
const std::map<std::string_view, Format>& coreFormats() {
    static const std::map<std::string_view, Format> formats{
        {"durationString", [](const array& a) { return value(durationText(number(a.at(0)))); }},
        {"maxElString", [](const array& a) { return value(maxElevationText(number(a.at(0)))); }},
        {"compassDirection",
         [](const array& a) { return value(compassDirection(number(a.at(0)))); }},
        {"directionArrow",
         [](const array& a) { return value(directionText(number(a.at(0)), number(a.at(1)))); }},
        {"utcTime", [](const array& a) { return value(utcTimeText(Instant{number(a.at(0))})); }},
        {"tleAgeString", [](const array& a) { return value(tleAgeText(number(a.at(0)))); }},
        {"statusLoaded",
         [](const array& a) { return value(statusLoaded(count(a.at(0)), number(a.at(1)))); }},
        {"statusComputing", [](const array& a) { return value(statusComputing(count(a.at(0)))); }},
        {"statusPasses", [](const array& a) { return value(statusPasses(count(a.at(0)))); }},
        {"statusTracking",
         [](const array& a) { return value(statusTracking(a.at(0).as_string())); }},
        {"clampUpdateRate",
         [](const array& a) { return value(clampUpdateRate(number(a.at(0)))); }}};
    return formats;
}

TEST(TextFormatsVectors, FormatsOfTheCore) {
    const auto file = loadVectors("data/text_formats.json");
    std::set<std::string_view> seen;
    forEachCase(file, "text_formats.json", "cases", [&seen](const boost::json::object& c) {
        expectKnownMembers(c, {"id", "note", "function", "args", "expected"}, "case");
        const auto format = coreFormats().find(c.at("function").as_string());
        if (format == coreFormats().end()) return;
        seen.insert(format->first);
        EXPECT_EQ(format->second(c.at("args").as_array()), c.at("expected")) << format->first;
    });
    EXPECT_EQ(seen.size(), coreFormats().size()) << "a format has no case";
}

}  // namespace
}  // namespace veloran::test
