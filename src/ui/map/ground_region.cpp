#include "ui/map/ground_region.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "orbit/angles.h"
#include "orbit/constants.h"

namespace veloran {

namespace {

double footprintAngle(double altitudeKm) {
    return footprintRadiusKm(altitudeKm) / WGS84::radiusEarthKm;
}

/// Degrees of the ground between two points.
double angleBetween(const SubSatellitePoint& a, const SubSatellitePoint& b) {
    const double u = a.latitudeDeg * deg2rad;
    const double v = b.latitudeDeg * deg2rad;
    const double cosine =
        std::sin(u) * std::sin(v) +
        std::cos(u) * std::cos(v) * std::cos((a.longitudeDeg - b.longitudeDeg) * deg2rad);
    return std::acos(std::clamp(cosine, -1.0, 1.0)) * rad2deg;
}

/// Whether the two footprints leave out nothing to speak of that lies between them: two circles of
/// 20 degrees that stand 3 apart, a low satellite's, reach to 0.05 of their common tangent.
bool areNear(const SubSatellitePoint& a, const SubSatellitePoint& b) {
    constexpr double kFarthest = 3;    // degrees of the ground
    constexpr double kMostGrowth = 1;  // degrees of the radius
    const double growth =
        footprintAngle(std::max(a.altitudeKm, 0.0)) - footprintAngle(std::max(b.altitudeKm, 0.0));
    return std::abs(growth) * rad2deg < kMostGrowth && angleBetween(a, b) < kFarthest;
}

class DenseTrack {
  public:
    explicit DenseTrack(const SubPointFn& subPoint) : subPoint_(subPoint) {}
    std::vector<SubSatellitePoint> take() { return std::move(track_); }

    void begin(Instant at) {
        at_ = at;
        last_ = subPoint_(at);
        if (last_) track_.push_back(*last_);
    }
    void goTo(Instant to) { goTo(to, subPoint_(to), kMostHalvings); }

  private:
    static constexpr int kMostHalvings = 6;

    void goTo(Instant to, const std::optional<SubSatellitePoint>& point, int halvings) {
        if (halvings > 0 && last_ && point && !areNear(*last_, *point)) {
            const Instant middle = at_ + (to - at_) / 2;
            goTo(middle, subPoint_(middle), halvings - 1);
            goTo(to, point, halvings - 1);
            return;
        }
        at_ = to;
        last_ = point;
        if (point) track_.push_back(*point);
    }

    const SubPointFn& subPoint_;
    Instant at_{};
    std::optional<SubSatellitePoint> last_;
    std::vector<SubSatellitePoint> track_;
};

/// The circle in which a body is above the horizon: where the direction's product with `axis` is at
/// least `cosine`.
struct Footprint {
    double lat, lon;  // radians
    double sinLat, cosLat;
    Vec3 axis;
    double cosine;
};

std::vector<Footprint> footprintsOf(const std::vector<SubSatellitePoint>& track) {
    std::vector<Footprint> result;
    result.reserve(track.size());
    for (const SubSatellitePoint& point : track) {
        if (!(point.altitudeKm > 0)) continue;
        const double lat = point.latitudeDeg * deg2rad;
        const double lon = point.longitudeDeg * deg2rad;
        const double sinLat = std::sin(lat);
        const double cosLat = std::cos(lat);
        result.push_back({lat,
                          lon,
                          sinLat,
                          cosLat,
                          {cosLat * std::cos(lon), cosLat * std::sin(lon), sinLat},
                          std::cos(footprintAngle(point.altitudeKm))});
    }
    return result;
}

// The ground as a grid: rows of latitude from the south pole to the north pole, columns of
// longitude eastward from -180 degrees, the last one next to the first. What lies inside is known
// at the nodes; the outline goes from edge to edge of the cells between them (marching squares).

constexpr int kRows = 361;
constexpr int kColumns = 720;
constexpr double kSpacing = 0.5;  // degrees

double latOf(int row) {
    return -90 + row * kSpacing;
}
double lonOf(int column) {
    return -180 + column * kSpacing;
}
int next(int column) {
    return column + 1 < kColumns ? column + 1 : 0;
}
std::size_t nodeAt(int row, int column) {
    return static_cast<std::size_t>(row) * kColumns + static_cast<std::size_t>(column);
}

class Grid {
  public:
    explicit Grid(std::vector<Footprint> footprints)
        : footprints_(std::move(footprints)), inside_(nodeAt(kRows, 0)) {
        for (int row = 0; row < kRows; ++row) fillRow(row);
    }

    bool isInside(int row, int column) const { return inside_[nodeAt(row, column)] != 0; }

    /// Where the outline crosses the way between two neighbours, as a share of the way.
    double crossing(int row, int column, int otherRow, int otherColumn) const {
        constexpr double kLeast = 1e-3;  // keeps corners of the outline apart
        const double here = margin(row, column);
        const double there = margin(otherRow, otherColumn);
        const double share = here == there ? 0.5 : here / (here - there);
        return std::clamp(share, kLeast, 1 - kLeast);
    }

  private:
    /// The longitudes of a parallel inside one footprint are an interval about its middle.
    void fillRow(int row) {
        const double sinLat = std::sin(latOf(row) * deg2rad);
        const double cosLat = std::cos(latOf(row) * deg2rad);
        const bool isPole = row == 0 || row == kRows - 1;
        std::vector<int> steps(kColumns + 1, 0);
        for (const Footprint& f : footprints_) {
            const double left = f.cosine - sinLat * f.sinLat;
            const double most = isPole ? 0 : cosLat * f.cosLat;
            if (left > most) continue;
            if (left <= -most) {
                std::fill_n(inside_.begin() + offset(row), kColumns, 1);
                return;
            }
            addInterval(steps, f.lon * rad2deg, std::acos(left / most) * rad2deg);
        }
        int depth = 0;
        for (int column = 0; column < kColumns; ++column) {
            depth += steps[static_cast<std::size_t>(column)];
            inside_[nodeAt(row, column)] = depth > 0;
        }
    }

    static std::ptrdiff_t offset(int row) { return static_cast<std::ptrdiff_t>(nodeAt(row, 0)); }

    static void addInterval(std::vector<int>& steps, double middle, double half) {
        const int first = static_cast<int>(std::ceil((middle - half + 180) / kSpacing));
        const int end = static_cast<int>(std::floor((middle + half + 180) / kSpacing)) + 1;
        if (end <= first) return;
        addNodes(steps, std::max(first, 0), std::min(end, kColumns));
        if (first < 0) addNodes(steps, first + kColumns, kColumns);
        if (end > kColumns) addNodes(steps, 0, end - kColumns);
    }
    static void addNodes(std::vector<int>& steps, int first, int end) {
        if (end <= first) return;
        ++steps[static_cast<std::size_t>(first)];
        --steps[static_cast<std::size_t>(end)];
    }

    /// How far a node lies inside, in a measure that is smooth across the outline.
    double margin(int row, int column) const {
        const double lat = latOf(row) * deg2rad;
        const double lon = lonOf(column) * deg2rad;
        const Vec3 at = {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon),
                         std::sin(lat)};
        double most = -2;
        for (const Footprint& f : footprints_) {
            most = std::max(most, at.x * f.axis.x + at.y * f.axis.y + at.z * f.axis.z - f.cosine);
        }
        return most;
    }

    std::vector<Footprint> footprints_;
    std::vector<char> inside_;
};

/// Walks round what is inside, with it on the left.
class Outline {
  public:
    explicit Outline(const Grid& grid) : grid_(grid), leadsTo_(2 * nodeAt(kRows, 0), kNowhere) {
        for (int row = 0; row + 1 < kRows; ++row) {
            for (int column = 0; column < kColumns; ++column) joinEdges(row, column);
        }
    }

    std::vector<GeoRing> rings() {
        std::vector<GeoRing> result;
        for (const int first : starts_) {
            if (leadsTo_[static_cast<std::size_t>(first)] == kNowhere) continue;
            GeoRing ring;
            int edge = first;
            do {
                ring.push_back(pointOn(edge));
                edge = std::exchange(leadsTo_[static_cast<std::size_t>(edge)], kNowhere);
            } while (edge != first);
            result.push_back(std::move(ring));
        }
        return result;
    }

  private:
    static constexpr int kNowhere = -1;

    /// Edges are numbered by their southern or western node; those along a parallel first.
    static int alongParallel(int row, int column) { return static_cast<int>(nodeAt(row, column)); }
    static int alongMeridian(int row, int column) {
        return static_cast<int>(nodeAt(kRows + row, column));
    }

    void join(int from, int to) {
        leadsTo_[static_cast<std::size_t>(from)] = to;
        starts_.push_back(from);
    }

    void joinEdges(int row, int column) {
        const int east = next(column);
        // Counterclockwise from the south-western corner, each with the edge that follows it.
        const bool corners[] = {grid_.isInside(row, column), grid_.isInside(row, east),
                                grid_.isInside(row + 1, east), grid_.isInside(row + 1, column)};
        if (corners[0] == corners[1] && corners[1] == corners[2] && corners[2] == corners[3]) {
            return;
        }
        const int edges[] = {alongParallel(row, column), alongMeridian(row, east),
                             alongParallel(row + 1, column), alongMeridian(row, column)};
        for (int i = 0; i < 4; ++i) {
            if (!corners[i] || corners[(i + 1) % 4]) continue;
            int before = i;  // back over the inner corners, to where they begin
            while (corners[before]) before = (before + 3) % 4;
            join(edges[i], edges[before]);
        }
    }

    GeoPoint pointOn(int edge) const {
        const int nodes = static_cast<int>(nodeAt(kRows, 0));
        const bool isAlongMeridian = edge >= nodes;
        const int row = edge % nodes / kColumns;
        const int column = edge % kColumns;
        if (isAlongMeridian) {
            const double share = grid_.crossing(row, column, row + 1, column);
            return {latOf(row) + share * kSpacing, lonOf(column)};
        }
        const double share = grid_.crossing(row, column, row, next(column));
        return {latOf(row), lonOf(column) + share * kSpacing};
    }

    const Grid& grid_;
    std::vector<int> leadsTo_;
    std::vector<int> starts_;
};

}  // namespace

GeoRing unwrapped(const GeoRing& points) {
    GeoRing result = points;
    for (std::size_t i = 1; i < result.size(); ++i) {
        const double step = points[i].lon - points[i - 1].lon;
        result[i].lon =
            result[i - 1].lon + (std::abs(step) <= 180 ? step : std::remainder(step, 360));
    }
    return result;
}

double turnOf(const GeoRing& unwrapped) {
    if (unwrapped.empty()) return 0;
    const double way = unwrapped.back().lon - unwrapped.front().lon;
    return way + std::remainder(-way, 360);
}

GroundRegion footprintRegion(const SubSatellitePoint& center) {
    constexpr int kSteps = 180;
    GroundRegion region;
    GeoRing ring = footprintPolygon(center, kSteps);
    if (ring.empty()) return region;
    std::reverse(ring.begin(), ring.end());  // comes clockwise
    region.holdsNorthPole = turnOf(unwrapped(ring)) > 180;
    region.rings.push_back(std::move(ring));
    return region;
}

GroundRegion sweptRegion(const std::vector<SubSatellitePoint>& track) {
    const Grid grid(footprintsOf(track));
    return {Outline(grid).rings(), grid.isInside(kRows - 1, 0)};
}

std::vector<SubSatellitePoint> trackForCoverage(const SubPointFn& subPoint, Instant from,
                                                Instant to, int steps) {
    DenseTrack track(subPoint);
    track.begin(from);
    for (int i = 1; i <= steps; ++i) track.goTo(i < steps ? from + (to - from) * i / steps : to);
    return track.take();
}

}  // namespace veloran
