#include "ui/format_cases.h"
#include "ui/sky_plot/sky_plot_texts.h"

namespace veloran::test {
namespace {

using boost::json::array;
using boost::json::value;

std::string_view phaseName(PassPhase phase) {
    switch (phase) {
        case PassPhase::beforeAOS:
            return "beforeAOS";
        case PassPhase::rising:
            return "rising";
        case PassPhase::atTCA:
            return "atTCA";
        case PassPhase::setting:
            return "setting";
        case PassPhase::ended:
            return "ended";
    }
    return {};
}

/// Arguments: now, rise, peak, set.
PassPhase phaseOf(const array& a) {
    PredictedPass pass;
    pass.riseTime = instant(a.at(1));
    pass.peakTime = instant(a.at(2));
    pass.setTime = instant(a.at(3));
    return passPhase(instant(a.at(0)), pass);
}

TEST(SkyPlotTextsVectors, FormatsOfTheSkyPlot) {
    expectFormats({
        {"plotAngleText", ofNumber(plotAngleText)},
        {"plotRangeText", ofNumber(plotRangeText)},
        {"plotVelocityText", ofNumber(plotVelocityText)},
        {"plotAccelerationText",
         [](const array& a) {
             return value(plotAccelerationText(number(a.at(0)), number(a.at(1))));
         }},
        {"degreeLabel",
         [](const array& a) { return value(degreeLabel(static_cast<int>(a.at(0).as_int64()))); }},
        {"passPhase", [](const array& a) { return value(phaseName(phaseOf(a))); }},
        {"passPhaseText", [](const array& a) { return value(passPhaseText(phaseOf(a))); }},
        {"passCountdown",
         [](const array& a) {
             PredictedPass pass;
             pass.riseTime = instant(a.at(1));
             pass.setTime = instant(a.at(2));
             return value(passCountdown(instant(a.at(0)), pass));
         }},
        {"formatHMS", ofNumber(formatHMS)},
    });
}

}  // namespace
}  // namespace veloran::test
