#include "orbit/satellite_sky.h"

#include <cmath>
#include <utility>

#include "orbit/far_below.h"
#include "orbit/height_estimate.h"
#include "orbit/sgp4.h"

namespace veloran {

namespace {

class SatelliteHeights final : public Heights {
  public:
    SatelliteHeights(std::shared_ptr<const SatRec> satrec, const GroundObserver& observer,
                     Instant from, Instant to)
        : satrec_(std::move(satrec)),
          observer_(observer),
          farBelow_(*satrec_, observer, from, to),
          estimate_(satrec_, observer, from, to) {}

    Height about(Instant at) override {
        const auto elevation = estimate_.at(at);
        return elevation ? Height{elevation->value, elevation->margin, at} : exactly(at);
    }

    Height exactly(Instant at) override {
        const JulianDate julian = jdayFromDate(at);
        const Propagation body = propagatePosition(*satrec_, minutesSinceEpoch(*satrec_, julian));
        if (body.error != Sgp4Error::none) return {-90.0, 0.0, at};
        const Vec3& position = body.state.position;
        const auto height = observer_.height(position, gstime(julian.jd + julian.jdFrac));
        if (!isOrdinary(height.range)) {
            const auto look = lookAngles(*satrec_, at, observer_);
            return {look ? look->elevation : -90.0, 0.0, at};
        }
        // Not so for NaN, right at the zenith or the nadir.
        if (height.elevation < farBelow) {
            return {height.elevation, 0.0, farBelow_.sureUntil(at, height.up, length(position))};
        }
        return {height.elevation, 0.0, at};
    }

  private:
    /// Whether the range rate surely is a number, too.
    static bool isOrdinary(double rangeKm) { return rangeKm > 1e-3 && rangeKm < 1e12; }
    static double length(const Vec3& v) { return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z); }

    std::shared_ptr<const SatRec> satrec_;
    GroundObserver observer_;
    FarBelow farBelow_;
    HeightEstimate estimate_;
};

}  // namespace

SkyFunctions satelliteSky(std::shared_ptr<const SatRec> satrec, double obsLat, double obsLon,
                          double obsAltMeters) {
    if (!satrec) return {[](Instant) { return std::nullopt; }};
    const GroundObserver observer(obsLat, obsLon, obsAltMeters / 1000.0);
    return {[satrec, observer](Instant at) { return lookAngles(*satrec, at, observer); },
            [satrec, observer](Instant from, Instant to) {
                return std::make_unique<SatelliteHeights>(satrec, observer, from, to);
            }};
}

}  // namespace veloran
