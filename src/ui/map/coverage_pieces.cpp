#include "ui/map/coverage_pieces.h"

#include <algorithm>
#include <cmath>

#include "orbit/constants.h"

namespace veloran {

namespace {

/// The great-circle angle between two points, radians.
double angleBetween(const GeoPoint& a, const GeoPoint& b) {
    const double cosine =
        std::sin(a.lat * deg2rad) * std::sin(b.lat * deg2rad) +
        std::cos(a.lat * deg2rad) * std::cos(b.lat * deg2rad) * std::cos((a.lon - b.lon) * deg2rad);
    return std::acos(std::clamp(cosine, -1.0, 1.0));
}

/// A tube taken apart into its two sides and its two caps.
class Tube {
  public:
    Tube(const GeoRing& ring, const std::vector<SubSatellitePoint>& track)
        : ring_(ring), cap_(ring.size() / 2 - track.size()) {
        for (const auto& point : track) track_.push_back({point.latitudeDeg, point.longitudeDeg});
    }

    std::size_t last() const { return track_.size() - 1; }
    double stepAngle(std::size_t i) const { return angleBetween(track_[i], track_[i + 1]); }

    /// Share of the sphere: a disc for the two caps and a belt along the track.
    double share() const {
        double length = 0;
        double radius = 0;
        for (std::size_t i = 0; i < track_.size(); ++i) {
            if (i < last()) length += stepAngle(i);
            radius = std::max(radius, angleBetween(track_[i], left(i)));
        }
        return (1 - std::cos(radius)) / 2 + length / twoPi * std::sin(radius);
    }

    GeoRing endCap() const { return capPiece(ring_.begin() + offset(track_.size()), last()); }
    GeoRing startCap() const {
        return capPiece(ring_.begin() + offset(2 * track_.size() + cap_), 0);
    }
    GeoRing belt(std::size_t from, std::size_t to) const {
        GeoRing piece;
        for (std::size_t i = from; i <= to; ++i) piece.push_back(left(i));
        appendCut(piece, left(to), to, right(to));
        for (std::size_t i = to + 1; i-- > from;) piece.push_back(right(i));
        appendCut(piece, right(from), from, left(from));
        return piece;
    }

  private:
    static GeoRing::difference_type offset(std::size_t i) {
        return static_cast<GeoRing::difference_type>(i);
    }
    const GeoPoint& left(std::size_t i) const { return ring_[i]; }
    const GeoPoint& right(std::size_t i) const { return ring_[2 * track_.size() + cap_ - 1 - i]; }
    GeoRing capPiece(GeoRing::const_iterator begin, std::size_t center) const {
        GeoRing piece(begin, begin + offset(cap_));
        appendCut(piece, GeoPoint(piece.back()), center, GeoPoint(piece.front()));
        return piece;
    }

    /// The way from one side to the other over the track, ends left out, in steps short enough for
    /// any projection.
    void appendCut(GeoRing& piece, const GeoPoint& from, std::size_t over,
                   const GeoPoint& to) const {
        constexpr int kSteps = 8;
        for (int i = kSteps - 1; i > 0; --i) piece.push_back(onSpoke(over, from, i, kSteps));
        piece.push_back(track_[over]);
        for (int i = 1; i < kSteps; ++i) piece.push_back(onSpoke(over, to, i, kSteps));
    }
    GeoPoint onSpoke(std::size_t center, const GeoPoint& rim, int i, int steps) const {
        const GeoPoint& from = track_[center];
        return destinationPoint(from.lat, from.lon,
                                initialBearing(from.lat, from.lon, rim.lat, rim.lon),
                                angleBetween(from, rim) * i / steps);
    }

    const GeoRing& ring_;
    std::size_t cap_;  // points in each cap
    GeoRing track_;
};

}  // namespace

std::vector<GeoRing> coveragePieces(const GeoRing& tube,
                                    const std::vector<SubSatellitePoint>& track) {
    constexpr double kSureShare = 0.4;
    constexpr double kLongestBelt = twoPi / 6;
    const Tube parts(tube, track);
    if (!(parts.share() > kSureShare)) return {tube};
    std::vector<GeoRing> pieces = {parts.startCap()};
    std::size_t begin = 0;
    double length = 0;
    for (std::size_t i = 0; i < parts.last(); ++i) {
        length += parts.stepAngle(i);
        if (length < kLongestBelt && i + 1 < parts.last()) continue;
        pieces.push_back(parts.belt(begin, i + 1));
        begin = i + 1;
        length = 0;
    }
    pieces.push_back(parts.endCap());
    return pieces;
}

}  // namespace veloran
