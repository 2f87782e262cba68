#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/published.h"
#include "core/pass_renewal.h"
#include "elements/tle_data.h"
#include "orbit/look_angles.h"
#include "orbit/pass_predictor.h"
#include "orbit/satrec.h"
#include "orbit/sub_satellite_point.h"
#include "transmitters/transmitter.h"

namespace veloran {

enum class BodyKind { sgp4, sun, moon };

/// One trackable body, shared by reference; `id` is its NORAD catalogue number, -1 for the Sun and
/// -2 for the Moon. Main thread only, but for what workers copy out: `satrec` and `bodyKind`.
class Satellite {
  public:
    Satellite(std::string name, std::int64_t noradId, std::vector<Transmitter> transmitters = {});

    /// Makes `satrec` from `tle`, if there is one.
    void initOrbit();

    /// Latitude and longitude in degrees, height in metres (not used for the Sun and the Moon).
    std::optional<TopocentricResult> observe(Instant at, double obsLat, double obsLon,
                                             double obsAltMeters) const;

    /// The point below the body; absent without an orbit.
    std::optional<SubSatellitePoint> currentSubPoint(Instant at) const;

    std::vector<Transmitter> downlinkTransmitters() const;
    std::vector<Transmitter> uplinkTransmitters() const;
    std::optional<Transmitter> primaryDownlink() const;

    ChangeNotifier objectWillChange;

    const std::int64_t id;
    std::string name;
    std::optional<TLEData> tle;
    std::shared_ptr<const SatRec> satrec;
    std::vector<Transmitter> transmitters;
    Published<bool> isSelected{objectWillChange, false};
    /// From the last computation; replaced whole, so a copy of the pointer is a snapshot.
    std::shared_ptr<const PassList> passes = std::make_shared<const PassList>();
    std::uint64_t passRun = 0;  ///< number of the computation that `passes` came from
    /// What `passes` was searched for; absent before the first search.
    std::optional<PassSearch> passSearch;
    /// Passes of the body that this one took the place of at a reload, until it has its own. Out of
    /// view: nothing is shown or tracked by them.
    std::optional<FormerPasses> inherited;

    /// What the next list of passes takes the place of; absent before the first one.
    std::optional<FormerPasses> formerPasses() const;
    /// Takes over what `earlier`, the body with this number before a reload, knew of its passes.
    void inheritPasses(const Satellite& earlier);
    BodyKind bodyKind = BodyKind::sgp4;
    std::set<std::string> sources;  ///< keys of the download groups, or "celestial"
};

using SatellitePtr = std::shared_ptr<Satellite>;

/// The body's place in the sky as a function that any thread may call: it holds what it needs.
PassPredictor::ObserveFn observeFunction(const Satellite& satellite, double obsLat, double obsLon,
                                         double obsAltMeters);
/// See groundTrack of orbit/ground_geometry.h.
std::vector<SubSatellitePoint> groundTrack(const Satellite& satellite, Instant from, Instant to,
                                           double stepSeconds = 30);
PassPredictor makePassPredictor(const Satellite& satellite, double obsLat, double obsLon,
                                double obsAltMeters);

}  // namespace veloran
