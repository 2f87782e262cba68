#include "ui/satellite_texts.h"

#include "format_cases.h"

namespace veloran::test {
namespace {

using boost::json::array;
using boost::json::value;

std::set<std::string> keys(const value& list) {
    std::set<std::string> result;
    for (const value& key : list.as_array()) result.emplace(key.as_string());
    return result;
}

std::vector<UserTLESource> sourcesNamed(const value& names) {
    std::vector<UserTLESource> result;
    for (const value& name : names.as_array()) {
        result.push_back({.id = "", .name = std::string(name.as_string()), .url = ""});
    }
    return result;
}

TEST(SatelliteTextsVectors, TextsAboutSourcesPassesAndAge) {
    expectFormats(
        {{"sourceDisplay",
          [](const array& a) {
              return value(sourceDisplay(keys(a.at(0)), sourcesNamed(a.at(1))));
          }},
         {"sourcesHelp", [](const array& a) { return value(sourcesHelp(keys(a.at(0)))); }},
         {"passesHelp",
          [](const array& a) {
              return value(passesHelp(static_cast<std::size_t>(a.at(0).as_int64())));
          }},
         {"ageColor", [](const array& a) { return value(inkName(ageColor(number(a.at(0))))); }},
         {"elementAgeColor",
          [](const array& a) { return value(inkName(elementAgeColor(number(a.at(0))))); }}});
}

}  // namespace
}  // namespace veloran::test
