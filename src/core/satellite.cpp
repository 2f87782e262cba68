#include "core/satellite.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

#include "base/vector_state.h"
#include "elements/tle_parser.h"
#include "orbit/ground_geometry.h"
#include "orbit/sun_moon.h"

namespace veloran {

namespace {

std::vector<Transmitter> withDirection(const std::vector<Transmitter>& transmitters,
                                       std::string_view direction) {
    std::vector<Transmitter> result;
    std::copy_if(transmitters.begin(), transmitters.end(), std::back_inserter(result),
                 [direction](const Transmitter& t) { return t.direction == direction; });
    return result;
}

/// Whether both give the same orbit, whatever else they tell.
bool isSameOrbit(const TLEData& a, const TLEData& b) {
    const auto numbers = [](const TLEData& tle) {
        return std::tie(tle.epochYear, tle.epochDays, tle.bstar, tle.inclination, tle.raan,
                        tle.eccentricity, tle.argPerigee, tle.meanAnomaly, tle.meanMotion);
    };
    return numbers(a) == numbers(b);
}

bool isSameOrbit(const Satellite& a, const Satellite& b) {
    if (a.bodyKind != b.bodyKind) return false;
    if (a.bodyKind != BodyKind::sgp4) return true;
    return a.tle && b.tle && isSameOrbit(*a.tle, *b.tle);
}

}  // namespace

Satellite::Satellite(std::string satelliteName, std::int64_t noradId,
                     std::vector<Transmitter> channels)
    : id(noradId), name(std::move(satelliteName)), transmitters(std::move(channels)) {}

void Satellite::initOrbit() {
    if (tle) satrec = std::make_shared<const SatRec>(TLEParser::createSatRec(*tle));
}

std::optional<FormerPasses> Satellite::formerPasses() const {
    if (!passSearch) return inherited;
    return FormerPasses{passes, *passSearch, true};
}

void Satellite::inheritPasses(const Satellite& earlier) {
    inherited = earlier.formerPasses();
    if (inherited && !isSameOrbit(*this, earlier)) inherited->sameElements = false;
}

std::optional<TopocentricResult> Satellite::observe(Instant at, double obsLat, double obsLon,
                                                    double obsAltMeters) const {
    switch (bodyKind) {
        case BodyKind::sun:
            return sunTopocentric(at, obsLat, obsLon);
        case BodyKind::moon:
            return moonTopocentric(at, obsLat, obsLon);
        case BodyKind::sgp4:
            break;
    }
    if (!satrec) return std::nullopt;
    return lookAngles(*satrec, at, obsLat, obsLon, obsAltMeters / 1000);
}

std::optional<SubSatellitePoint> Satellite::currentSubPoint(Instant at) const {
    switch (bodyKind) {
        case BodyKind::sun:
            return sunSubPoint(at);
        case BodyKind::moon:
            return moonSubPoint(at);
        case BodyKind::sgp4:
            break;
    }
    return satrec ? subSatellitePoint(*satrec, at) : std::nullopt;
}

std::vector<Transmitter> Satellite::downlinkTransmitters() const {
    return withDirection(transmitters, "down");
}

std::vector<Transmitter> Satellite::uplinkTransmitters() const {
    return withDirection(transmitters, "up");
}

std::optional<Transmitter> Satellite::primaryDownlink() const {
    const auto first = std::find_if(transmitters.begin(), transmitters.end(),
                                    [](const Transmitter& t) { return t.direction == "down"; });
    return first == transmitters.end() ? std::nullopt : std::optional(*first);
}

std::vector<SubSatellitePoint> groundTrack(const Satellite& satellite, Instant from, Instant to,
                                           double stepSeconds) {
    clearUpperVectorHalves();  // asked for while something is drawn
    return groundTrack([&satellite](Instant t) { return satellite.currentSubPoint(t); }, from, to,
                       stepSeconds);
}

PassPredictor::ObserveFn observeFunction(const Satellite& satellite, double obsLat, double obsLon,
                                         double obsAltMeters) {
    switch (satellite.bodyKind) {
        case BodyKind::sun:
            return [=](Instant at) { return std::optional(sunTopocentric(at, obsLat, obsLon)); };
        case BodyKind::moon:
            return [=](Instant at) { return std::optional(moonTopocentric(at, obsLat, obsLon)); };
        case BodyKind::sgp4:
            break;
    }
    // The record is shared, never changed: it outlives the satellite for as long as a search runs.
    return [=, satrec = satellite.satrec](Instant at) -> std::optional<TopocentricResult> {
        if (!satrec) return std::nullopt;
        return lookAngles(*satrec, at, obsLat, obsLon, obsAltMeters / 1000);
    };
}

PassPredictor makePassPredictor(const Satellite& satellite, double obsLat, double obsLon,
                                double obsAltMeters) {
    if (satellite.bodyKind == BodyKind::sgp4) {
        return PassPredictor(satellite.satrec, obsLat, obsLon, obsAltMeters);
    }
    return PassPredictor(observeFunction(satellite, obsLat, obsLon, obsAltMeters), obsLat, obsLon,
                         obsAltMeters);
}

}  // namespace veloran
