#pragma once

#include <optional>

#include "base/instant.h"
#include "orbit/pass_predictor.h"
#include "orbit/satrec.h"

namespace veloran {

struct DopplerResult {
    double correctedFreqHz = 0;      ///< nominal frequency plus shift
    double dopplerShiftHz = 0;       ///< positive while the body approaches
    double dopplerRateHzPerSec = 0;  ///< forward difference of the shift over 0.5 s
    double rangeKm = 0;
    double rangeRateKmS = 0;  ///< positive when receding
};

struct DopplerRange {
    double minShift = 0;  ///< Hz
    double maxShift = 0;  ///< Hz
    double peakRate = 0;  ///< Hz/s at the time of the peak
};

/// First-order Doppler: shift = -(f rangeRate) / c. For an uplink the caller negates the range
/// rate, so that the signal arrives on its rest frequency. Frequencies and shifts in Hz, range
/// rates in km/s (positive when receding), latitude and longitude in degrees, height in metres.
class DopplerCalc {
  public:
    static constexpr double speedOfLight = 299792.458;  // km/s
    /// How far ahead the rate of change looks, and what it divides by.
    static constexpr double lookAheadSeconds = 0.5;

    static double compute(double freqHz, double rangeRateKmS);
    /// Absent where the look angles at `date`, or lookAheadSeconds after it, are absent.
    static std::optional<DopplerResult> computeFull(const SatRec& satrec, Instant date,
                                                    double freqHz, double obsLat, double obsLon,
                                                    double obsAltMeters);
    /// 51 samples of the pass. Without any state: +infinity, -infinity and 0.
    static DopplerRange dopplerRange(const SatRec& satrec, const PredictedPass& pass, double freqHz,
                                     double obsLat, double obsLon, double obsAltMeters);
};

}  // namespace veloran
