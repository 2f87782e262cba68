#include "orbit/doppler_calc.h"

#include <algorithm>
#include <limits>

#include "orbit/look_angles.h"

namespace veloran {

double DopplerCalc::compute(double freqHz, double rangeRateKmS) {
    return -(freqHz * rangeRateKmS) / speedOfLight;
}

std::optional<DopplerResult> DopplerCalc::computeFull(const SatRec& satrec, Instant date,
                                                      double freqHz, double obsLat, double obsLon,
                                                      double obsAltMeters) {
    const double obsAltKm = obsAltMeters / 1000.0;
    const auto now = lookAngles(satrec, date, obsLat, obsLon, obsAltKm);
    if (!now) return std::nullopt;
    const auto ahead = lookAngles(satrec, date + lookAheadSeconds, obsLat, obsLon, obsAltKm);
    if (!ahead) return std::nullopt;

    const double shift = compute(freqHz, now->rangeRate);
    const double shiftAhead = compute(freqHz, ahead->rangeRate);
    DopplerResult result;
    result.correctedFreqHz = freqHz + shift;
    result.dopplerShiftHz = shift;
    result.dopplerRateHzPerSec = (shiftAhead - shift) / lookAheadSeconds;
    result.rangeKm = now->range;
    result.rangeRateKmS = now->rangeRate;
    return result;
}

DopplerRange DopplerCalc::dopplerRange(const SatRec& satrec, const PredictedPass& pass,
                                       double freqHz, double obsLat, double obsLon,
                                       double obsAltMeters) {
    constexpr int steps = 50;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const double obsAltKm = obsAltMeters / 1000.0;
    const double dt = pass.duration / steps;

    DopplerRange range{infinity, -infinity, 0.0};
    for (int i = 0; i <= steps; ++i) {
        const auto look = lookAngles(satrec, pass.riseTime + dt * i, obsLat, obsLon, obsAltKm);
        if (!look) continue;
        const double shift = compute(freqHz, look->rangeRate);
        range.minShift = std::min(shift, range.minShift);
        range.maxShift = std::max(shift, range.maxShift);
    }
    const auto atPeak = computeFull(satrec, pass.peakTime, freqHz, obsLat, obsLon, obsAltMeters);
    if (atPeak) range.peakRate = atPeak->dopplerRateHzPerSec;
    return range;
}

}  // namespace veloran
