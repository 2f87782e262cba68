#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/instant.h"
#include "orbit/look_angles.h"

namespace veloran {

/// One sample of a pass; units as in TopocentricResult.
struct PassPoint {
    Instant date;
    double azimuth = 0;
    double elevation = 0;
    double range = 0;
    double rangeRate = 0;
};

/// One stay above the horizon (elevation 0). Angles in degrees, `duration` in seconds.
struct PredictedPass {
    Instant riseTime;
    Instant peakTime;
    Instant setTime;  ///< the end of the search span if the pass outlasts it
    double maxElevation = 0;
    double riseAzimuth = 0;
    double setAzimuth = 0;
    double peakAzimuth = 0;
    double duration = 0;
    std::vector<PassPoint> trackPoints;  ///< evenly spaced from rise to set, 21 to 201
};

using PassList = std::vector<PredictedPass>;

/// Finds the passes of one body over one observer: a horizon-crossing search over an opaque
/// function from time to look angles. Holds no results; findPasses may run on any thread as long as
/// the function may.
class PassPredictor {
  public:
    using ObserveFn = std::function<std::optional<TopocentricResult>(Instant)>;

    /// Latitude and longitude in degrees, height in metres.
    PassPredictor(ObserveFn observeFn, double obsLat, double obsLon, double obsAltMeters);
    PassPredictor(std::shared_ptr<const SatRec> satrec, double obsLat, double obsLon,
                  double obsAltMeters);

    std::optional<TopocentricResult> observe(Instant at) const { return observeFn_(at); }

    /// Passes in time order. `minElevation` (degrees) is tested against the highest sample of the
    /// search, not against the refined peak. `stepSeconds` is accepted and ignored: the step
    /// follows the elevation. Passes under 30 seconds are left out.
    PassList findPasses(Instant start, double hoursAhead = 24, double minElevation = 2,
                        double stepSeconds = 30) const;

  private:
    ObserveFn observeFn_;
    double obsLat_;
    double obsLon_;
    double obsAlt_;  // km
};

}  // namespace veloran
