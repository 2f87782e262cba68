#include "ui/sky_plot/look_angle_rows.h"

#include <cmath>

#include "ui/sky_plot/sky_plot_texts.h"

namespace veloran {

namespace {

RowValue row(std::string text, Ink ink) {
    if (text == RowValue{}.text) return {};
    return {std::move(text), ink};
}

void fillPassRows(RowValues& rows, const PassInfo& info, Instant now) {
    const PassPhase phase = passPhase(now, info.pass);
    rows[0] = row(info.riseTimeLocal() + " local", Ink::green);
    rows[1] = row(info.peakTimeLocal() + " local", Ink::yellow);
    rows[2] = row(info.setTimeLocal() + " local", Ink::red);
    rows[3] = row(info.durationString(), Ink::primary);
    if (std::isfinite(info.pass.maxElevation)) rows[4] = row(info.maxElString(), Ink::yellow);
    rows[5] = row(passCountdown(now, info.pass), Ink::orange);
    rows[6] = row(std::string(passPhaseText(phase)), passPhaseColor(phase));
}

}  // namespace

RowValues lookAngleRows(const std::optional<PassInfo>& pass, Instant now,
                        const std::optional<TopocentricResult>& live,
                        const std::optional<TopocentricResult>& next) {
    RowValues rows;
    if (pass) fillPassRows(rows, *pass, now);
    if (!live) return rows;
    const Ink motion = rangeRateColor(live->rangeRate);
    rows[7] = row(plotAngleText(live->azimuth), Ink::cyan);
    rows[8] = row(plotAngleText(live->elevation), Ink::cyan);
    rows[9] = row(plotRangeText(live->range), Ink::mint);
    rows[10] = row(plotVelocityText(live->rangeRate), motion);
    if (next) rows[11] = row(plotAccelerationText(live->rangeRate, next->rangeRate), motion);
    return rows;
}

}  // namespace veloran
