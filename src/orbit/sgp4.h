#pragma once

#include <optional>

#include "orbit/satrec.h"
#include "orbit/vec3.h"

namespace veloran {

/// State in the true equator, mean equinox frame (TEME) of date.
struct SGP4Result {
    Vec3 position;  ///< km
    Vec3 velocity;  ///< km/s
};

/// Error codes of the published routine; 3 and 5 of that set do not occur here. Elements or times
/// that are not finite give one of these as well, so a state is always made of finite numbers.
enum class Sgp4Error {
    none = 0,
    eccentricity = 1,     ///< at or above 1, or below -0.001 (below 0 at creation)
    meanMotion = 2,       ///< not positive
    semiLatusRectum = 4,  ///< negative
    decayed = 6           ///< radius below one Earth radius
};

struct Propagation {
    Sgp4Error error = Sgp4Error::none;
    SGP4Result state;  ///< meaningful only without an error
};

/// The kernel: reads the record, writes nothing, allocates nothing; any number of threads may call
/// it on one record. `tsince` in minutes from the epoch, negative allowed.
Propagation propagate(const SatRec& satrec, double tsince);
/// The same error and the same position to the last bit, sooner; the velocity is not computed.
Propagation propagatePosition(const SatRec& satrec, double tsince);

/// The same for one thread, keeping the published routine's habit of storing `t` and `error`.
std::optional<SGP4Result> sgp4(SatRec& satrec, double tsince);

/// Computes every constant of the propagation from the elements, the epoch and `isimp`, then
/// propagates to time 0 so that `error` tells of the epoch state.
void sgp4init(SatRec& satrec);

/// The place of a deep-space theory. There is none: every orbit, whatever its period, gets the
/// near-Earth equations, and the three arguments are ignored.
void dsInit(SatRec& satrec, double cosio, double sinio, double eosq);

}  // namespace veloran
