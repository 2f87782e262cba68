#include "ui/detail_sheet/detail_sheet_texts.h"

#include "../format_cases.h"

namespace veloran::test {
namespace {

using boost::json::array;
using boost::json::value;

value elementRows(const array& a) {
    TLEData tle;
    tle.inclination = number(a.at(0));
    tle.eccentricity = number(a.at(1));
    tle.raan = number(a.at(2));
    tle.argPerigee = number(a.at(3));
    tle.meanAnomaly = number(a.at(4));
    tle.meanMotion = number(a.at(5));
    boost::json::object rows;
    for (const auto& [label, text] : orbitalElements(tle)) rows[label] = text;
    return rows;
}

TEST(DetailSheetTextsVectors, ElementsEpochsChannelsAndPasses) {
    expectFormats(
        {{"orbitalElements", elementRows},
         {"periodText", ofNumber(periodText)},
         {"tleEpochString",
          [](const array& a) {
              return value(tleEpochString(a.at(0).to_number<std::int64_t>(), number(a.at(1)),
                                          Instant{number(a.at(2))}));
          }},
         {"toneText", ofNumber(toneText)},
         {"maxText", ofNumber(maxText)},
         {"morePasses",
          [](const array& a) {
              const auto text = morePasses(static_cast<std::size_t>(a.at(0).as_int64()));
              return text ? value(*text) : value();
          }},
         {"passRowTime", [](const array& a) { return value(passRowTime(instant(a.at(0)))); }}});
}

}  // namespace
}  // namespace veloran::test
