#include "ui/format_cases.h"
#include "ui/formats.h"
#include "ui/settings/settings_form.h"

namespace veloran::test {
namespace {

TEST(SettingsTextsVectors, FormatsOfTheSettings) {
    expectFormats({{"coordField", ofNumber(coordField)},
                   {"altitudeField", ofNumber(altitudeField)},
                   {"thresholdValue", ofNumber(elevationText)},
                   {"sectionCount", [](const boost::json::array& a) {
                        return boost::json::value(
                            sectionCount(static_cast<std::size_t>(a.at(0).as_int64()),
                                         static_cast<std::size_t>(a.at(1).as_int64())));
                    }}});
}

}  // namespace
}  // namespace veloran::test
