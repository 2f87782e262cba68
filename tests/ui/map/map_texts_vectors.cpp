#include "ui/format_cases.h"
#include "ui/map/map_texts.h"

namespace veloran::test {
namespace {

TEST(MapTextsVectors, FormatsOfTheMap) {
    expectFormats({{"trackHoursText", ofNumber(trackHoursText)},
                   {"observerAnnotation", [](const boost::json::array& a) {
                        return boost::json::value(observerAnnotation(a.at(0).as_string()));
                    }}});
}

}  // namespace
}  // namespace veloran::test
