#include "../format_cases.h"
#include "ui/timeline/timeline_gestures.h"
#include "ui/timeline/timeline_texts.h"
#include "ui/timeline/timeline_ticks.h"

namespace veloran::test {
namespace {

using boost::json::array;
using boost::json::value;

Format ofSpan(double (*function)(double)) {
    return [function](const array& a) { return value(function(number(a.at(0)))); };
}

TEST(TimelineTextsVectors, FormatsOfTheTimeline) {
    expectFormats({{"autoThresholdText",
                    [](const array& a) {
                        const auto text = autoThresholdText(number(a.at(0)));
                        return text ? value(*text) : value(nullptr);
                    }},
                   {"bestHourStep", ofSpan(bestHourStep)},
                   {"minorHourStep", ofSpan(minorHourStep)},
                   {"hoursText", ofNumber(hoursText)},
                   {"zoomIn", ofSpan(zoomIn)},
                   {"zoomOut", ofSpan(zoomOut)},
                   {"pinchHours", ofSpan(pinchHours)},
                   {"timelineLabel", [](const array& a) {
                        return value(
                            timelineLabel(instant(a.at(0)), number(a.at(1)), number(a.at(2))));
                    }}});
}

}  // namespace
}  // namespace veloran::test
