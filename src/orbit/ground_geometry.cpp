#include "orbit/ground_geometry.h"

#include <algorithm>
#include <cmath>

#include "orbit/angles.h"
#include "orbit/constants.h"
#include "orbit/look_angles.h"
#include "orbit/sgp4.h"

namespace veloran {

namespace {

/// Angular radius of the horizon circle seen from a height, radians.
double horizonAngle(double altitudeKm) {
    return std::acos(WGS84::radiusEarthKm / (WGS84::radiusEarthKm + altitudeKm));
}

bool crosses(const GeoPoint& a, const GeoPoint& b) {
    return std::abs(b.lon - a.lon) > 180;
}

bool anyEdgeCrosses(const GeoRing& ring) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
        if (crosses(ring[i], ring[(i + 1) % ring.size()])) return true;
    }
    return false;
}

/// Runs of a ring between its crossings of the antimeridian; the last run leads into the first.
std::vector<GeoRing> cutRuns(const GeoRing& ring) {
    std::vector<GeoRing> parts;
    GeoRing current;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const auto& a = ring[i];
        const auto& b = ring[(i + 1) % ring.size()];
        current.push_back(a);
        if (!crosses(a, b)) continue;
        const double unwrapped = b.lon - a.lon > 0 ? b.lon - 360 : b.lon + 360;
        const double edge = a.lon > 0 ? 180 : -180;
        // From +180 to -180 is no way at all.
        const double t = unwrapped == a.lon ? 0 : (edge - a.lon) / (unwrapped - a.lon);
        const double lat = a.lat + t * (b.lat - a.lat);
        current.push_back({lat, edge});
        parts.push_back(std::move(current));
        current = {{lat, -edge}};
    }
    parts.front().insert(parts.front().begin(), current.begin(), current.end());
    return parts;
}

std::vector<GeoRing> withAtLeast(std::vector<GeoRing> parts, std::size_t points) {
    std::erase_if(parts, [points](const auto& part) { return part.size() < points; });
    return parts;
}

}  // namespace

SubSatellitePoint geodeticPoint(const Vec3& position, double gmst) {
    const double x = std::cos(gmst) * position.x + std::sin(gmst) * position.y;
    const double y = -std::sin(gmst) * position.x + std::cos(gmst) * position.y;
    const double r = std::sqrt(x * x + y * y);
    const double longitude = std::atan2(y, x);
    double phi = std::atan2(position.z, r * (1 - WGS84::e2));
    double height = 0;
    for (int i = 0; i < 5; ++i) {
        const double sinPhi = std::sin(phi);
        const double n = WGS84::radiusEarthKm / std::sqrt(1 - WGS84::e2 * sinPhi * sinPhi);
        height = r / std::cos(phi) - n;
        phi = std::atan2(position.z, r * (1 - WGS84::e2 * n / (n + height)));
    }
    return {phi * rad2deg, withinHalfTurn(longitude * rad2deg, 360.0), height};
}

std::optional<SubSatellitePoint> subSatellitePoint(const SatRec& satrec, Instant date) {
    const auto state = propagate(satrec, minutesSinceEpoch(satrec, date));
    if (state.error != Sgp4Error::none) return std::nullopt;
    const auto day = jdayFromDate(date);
    return geodeticPoint(state.state.position, gstime(day.jd + day.jdFrac));
}

std::vector<SubSatellitePoint> groundTrack(const SubPointFn& subPoint, Instant from, Instant to,
                                           double stepSeconds) {
    std::vector<SubSatellitePoint> track;
    if (!(stepSeconds > 0)) return track;
    for (Instant t = from; t <= to; t = t + stepSeconds) {
        if (const auto point = subPoint(t)) track.push_back(*point);
    }
    return track;
}

std::vector<SubSatellitePoint> groundTrack(const SatRec& satrec, Instant from, Instant to,
                                           double stepSeconds) {
    return groundTrack([&satrec](Instant t) { return subSatellitePoint(satrec, t); }, from, to,
                       stepSeconds);
}

double footprintRadiusKm(double altitudeKm) {
    return WGS84::radiusEarthKm * horizonAngle(altitudeKm);
}

GeoRing footprintPolygon(const SubSatellitePoint& center, int steps) {
    GeoRing ring;
    if (!(center.altitudeKm > 0)) return ring;
    const double delta = horizonAngle(center.altitudeKm);
    ring.reserve(static_cast<std::size_t>(std::max(steps, 0)));
    for (int i = 0; i < steps; ++i) {
        ring.push_back(
            destinationPoint(center.latitudeDeg, center.longitudeDeg, twoPi * i / steps, delta));
    }
    return ring;
}

double initialBearing(double fromLat, double fromLon, double toLat, double toLon) {
    const double phi1 = fromLat * deg2rad;
    const double phi2 = toLat * deg2rad;
    const double dLon = (toLon - fromLon) * deg2rad;
    return std::atan2(
        std::sin(dLon) * std::cos(phi2),
        std::cos(phi1) * std::sin(phi2) - std::sin(phi1) * std::cos(phi2) * std::cos(dLon));
}

GeoPoint destinationPoint(double fromLat, double fromLon, double bearing, double angularDistance) {
    const double phi1 = fromLat * deg2rad;
    const double lambda1 = fromLon * deg2rad;
    const double phi2 = std::asin(std::sin(phi1) * std::cos(angularDistance) +
                                  std::cos(phi1) * std::sin(angularDistance) * std::cos(bearing));
    const double lambda2 =
        lambda1 + std::atan2(std::sin(bearing) * std::sin(angularDistance) * std::cos(phi1),
                             std::cos(angularDistance) - std::sin(phi1) * std::sin(phi2));
    return {phi2 * rad2deg, withinHalfTurn(lambda2 * rad2deg, 360.0)};
}

GeoRing arcPoints(GeoPoint center, double startBearing, double endBearing, double angularDistance,
                  int steps) {
    GeoRing points;
    if (steps <= 0) return points;
    double sweep = endBearing - startBearing;
    if (sweep > twoPi) sweep -= twoPi;
    if (sweep < -twoPi) sweep += twoPi;
    points.reserve(static_cast<std::size_t>(steps) + 1);
    for (int i = 0; i <= steps; ++i) {
        points.push_back(destinationPoint(center.lat, center.lon, startBearing + sweep * i / steps,
                                          angularDistance));
    }
    return points;
}

std::optional<GeoRing> coverageTube(const std::vector<SubSatellitePoint>& track, int capSteps) {
    if (track.size() < 2) return std::nullopt;
    const auto bearing = [&track](std::size_t from, std::size_t to) {
        return initialBearing(track[from].latitudeDeg, track[from].longitudeDeg,
                              track[to].latitudeDeg, track[to].longitudeDeg);
    };
    const std::size_t last = track.size() - 1;
    GeoRing ring;
    GeoRing right;
    for (std::size_t i = 0; i <= last; ++i) {
        double theta;
        if (i == 0) {
            theta = bearing(0, 1);
        } else if (i == last) {
            theta = bearing(last - 1, last);
        } else {
            // The circular mean of where the track comes from and where it goes.
            const double a = bearing(i - 1, i);
            const double b = bearing(i, i + 1);
            theta = std::atan2((std::sin(a) + std::sin(b)) / 2, (std::cos(a) + std::cos(b)) / 2);
        }
        const auto& at = track[i];
        const double delta = horizonAngle(at.altitudeKm);
        constexpr double quarter = twoPi / 4;
        ring.push_back(destinationPoint(at.latitudeDeg, at.longitudeDeg, theta - quarter, delta));
        right.push_back(destinationPoint(at.latitudeDeg, at.longitudeDeg, theta + quarter, delta));
    }
    const auto appendCap = [&](std::size_t at, double from, double to) {
        const auto cap = arcPoints({track[at].latitudeDeg, track[at].longitudeDeg}, from, to,
                                   horizonAngle(track[at].altitudeKm), capSteps);
        ring.insert(ring.end(), cap.begin(), cap.end());
    };
    const double out = bearing(last - 1, last);
    const double in = bearing(0, 1);
    appendCap(last, out - twoPi / 4, out + twoPi / 4);
    ring.insert(ring.end(), right.rbegin(), right.rend());
    appendCap(0, in + twoPi / 4, in + 3 * twoPi / 4);
    return ring;
}

std::vector<GeoRing> splitPolygonAtAntimeridian(const GeoRing& ring) {
    if (ring.size() < 3 || !anyEdgeCrosses(ring)) return {ring};
    return withAtLeast(cutRuns(ring), 3);
}

std::vector<GeoRing> splitPolygonArcsAtAntimeridian(const GeoRing& ring) {
    if (ring.size() < 2) return {ring};
    if (!anyEdgeCrosses(ring)) {
        auto closed = ring;
        closed.push_back(ring.front());
        return {closed};
    }
    return withAtLeast(cutRuns(ring), 2);
}

}  // namespace veloran
