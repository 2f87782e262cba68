#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/instant.h"
#include "orbit/look_angles.h"
#include "orbit/satellite_sky.h"

namespace veloran {

/// One sample of a pass; units as in TopocentricResult, and like there the elevation of a body
/// right at the zenith may be NaN.
struct PassPoint {
    Instant date;
    double azimuth = 0;
    double elevation = 0;
    double range = 0;
    double rangeRate = 0;
};

/// One stay above the horizon (elevation 0). Angles in degrees, `duration` in seconds.
struct PredictedPass {
    /// For a pass under way at the start of the search, about one step (10 s) before that start.
    Instant riseTime;
    Instant peakTime;
    Instant setTime;          ///< the end of the search span if the pass outlasts it
    double maxElevation = 0;  ///< at `peakTime`; may be NaN right at the zenith
    double riseAzimuth = 0;
    double setAzimuth = 0;
    double peakAzimuth = 0;
    double duration = 0;
    /// Evenly spaced from rise to set, 21 to 201; fewer where samples are absent.
    std::vector<PassPoint> trackPoints;
};

using PassList = std::vector<PredictedPass>;

/// Finds the passes of one body over one observer: a horizon-crossing search over an opaque
/// function from time to look angles. Holds no results; findPasses may run on any thread as long as
/// the function may.
class PassPredictor {
  public:
    using ObserveFn = std::function<std::optional<TopocentricResult>(Instant)>;

    /// Latitude and longitude in degrees, height in metres. A null record is absent at every time.
    PassPredictor(ObserveFn observeFn, double obsLat, double obsLon, double obsAltMeters);
    PassPredictor(SkyFunctions sky, double obsLat, double obsLon, double obsAltMeters);
    PassPredictor(std::shared_ptr<const SatRec> satrec, double obsLat, double obsLon,
                  double obsAltMeters);

    double obsLat() const { return obsLat_; }
    double obsLon() const { return obsLon_; }
    double obsAltKm() const { return obsAltKm_; }

    std::optional<TopocentricResult> observe(Instant at) const { return sky_.observe(at); }

    /// Passes in time order. `minElevation` (degrees) is tested against the highest sample of the
    /// search, not against the refined peak. `stepSeconds` is accepted and ignored: the step
    /// follows the elevation. Passes under 30 seconds are left out. Always ends, whatever the body
    /// does: spans are cut to maxSearchHours.
    PassList findPasses(Instant start, double hoursAhead = 24, double minElevation = 2,
                        double stepSeconds = 30) const;

    static constexpr double maxSearchHours = 24.0 * 3653.0;  ///< ten years

  private:
    class Search;

    SkyFunctions sky_;
    double obsLat_;
    double obsLon_;
    double obsAltKm_;
};

}  // namespace veloran
