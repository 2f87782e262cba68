#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "base/instant.h"
#include "orbit/look_angles.h"
#include "orbit/satrec.h"

namespace veloran {

/// How high one body stands over one observer, for one search in one thread.
class Heights {
  public:
    static constexpr double farBelow = -10.0;  ///< degrees

    struct Height {
        double elevation = 0;  ///< degrees; -90 where the body is absent
        /// The elevation as look angles have it differs by at most this; 0: not in the last bit.
        double margin = 0;
        /// Until then the body is surely lower than `farBelow` or absent; the moment itself where
        /// nothing is sure.
        Instant farBelowUntil;
    };

    virtual ~Heights() = default;
    virtual Height exactly(Instant at) = 0;
    /// Sooner, where moments are asked for that lie close together.
    virtual Height about(Instant at) = 0;
};

/// One body over one observer. A search needs `observe` alone, which any thread may call; the rest
/// spares it work, and changes nothing of what it finds.
struct SkyFunctions {
    std::function<std::optional<TopocentricResult>(Instant)> observe;
    /// For moments from `from` to `to`. May be empty.
    std::function<std::unique_ptr<Heights>(Instant from, Instant to)> heightsBetween{};
};

/// Latitude and longitude in degrees, height in metres. A null record is absent at every time.
SkyFunctions satelliteSky(std::shared_ptr<const SatRec> satrec, double obsLat, double obsLon,
                          double obsAltMeters);

}  // namespace veloran
