#include "ui/map/limb_clip.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>
#include <optional>

namespace veloran {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kStep = 2 * kPi / 180;  // longest edge that may be drawn straight, radians
constexpr double kSliver = 1e-9;         // shorter pieces, radians, are nothing to see
constexpr double kSameAngle = 1e-6;      // a hole in a ring at the limb that is none, radians

/// The shortest great circle from a to b, by the angle from a.
class Arc {
  public:
    Arc(const Vec3& a, const Vec3& b) : from_(a) {
        const double cosine = dot(a, b);
        const Vec3 across = {b.x - cosine * a.x, b.y - cosine * a.y, b.z - cosine * a.z};
        const double sine = std::sqrt(dot(across, across));
        length_ = std::atan2(sine, cosine);
        if (sine > 0) ahead_ = {across.x / sine, across.y / sine, across.z / sine};
    }

    double length() const { return length_; }

    Vec3 at(double angle) const {
        const double c = std::cos(angle);
        const double s = std::sin(angle);
        return {c * from_.x + s * ahead_.x, c * from_.y + s * ahead_.y, c * from_.z + s * ahead_.z};
    }

    struct Span {
        double from, to;
    };
    /// The angles, about its highest point, where the whole circle is at least at `limb`.
    std::optional<Span> above(double limb) const {
        const double greatest = std::hypot(from_.z, ahead_.z);
        if (greatest <= limb) return std::nullopt;
        const double middle = std::atan2(ahead_.z, from_.z);
        const double half = std::acos(limb / greatest);
        return Span{middle - half, middle + half};
    }

  private:
    Vec3 from_;
    Vec3 ahead_;
    double length_ = 0;
};

/// A piece of a line or ring before the limb.
struct Run {
    SphereLine points;
    double enters = 0;  ///< angle about the axis where it comes over the limb, if it does
    double leaves = 0;
};

double angleAboutAxis(const Vec3& point) {
    return std::atan2(point.y, point.x);
}

/// Counterclockwise about the axis from a to b, the shorter way.
double angleAround(const Vec3& a, const Vec3& b) {
    return std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y);
}

class LimbCutter {
  public:
    explicit LimbCutter(double limb) : limb_(limb) {}

    bool isVisible(const Vec3& point) const { return point.z >= limb_; }

    void begin(const Vec3& point) {
        if (isVisible(point)) runs_.push_back({{point}});
    }

    void edge(const Vec3& a, const Vec3& b) {
        const bool isBegun = isVisible(a);
        if (isBegun && isVisible(b)) {
            appendSteps(a, b);
        } else if (isBegun) {
            leave(a, b);
        } else if (isVisible(b)) {
            enter(a, b);
        } else {
            touch(a, b);
        }
    }

    std::vector<Run> takeRuns() { return std::move(runs_); }

  private:
    void append(const Arc& arc, double from, double to) {
        const double steps = std::ceil((to - from) / kStep);
        for (double i = 1; i <= steps; ++i) {
            runs_.back().points.push_back(arc.at(from + (to - from) * (i / steps)));
        }
    }

    void appendSteps(const Vec3& a, const Vec3& b) {
        static const double isShort = std::cos(kStep);
        if (dot(a, b) < isShort) {
            const Arc arc(a, b);
            append(arc, 0, arc.length());
            runs_.back().points.back() = b;
        } else {
            runs_.back().points.push_back(b);
        }
    }

    void leave(const Vec3& a, const Vec3& b) {
        const Arc arc(a, b);
        const auto span = arc.above(limb_);
        append(arc, 0, span ? std::clamp(span->to, 0.0, arc.length()) : 0);
        runs_.back().leaves = angleAboutAxis(runs_.back().points.back());
    }

    void enter(const Vec3& a, const Vec3& b) {
        const Arc back(b, a);
        const auto span = back.above(limb_);
        const double length = span ? std::clamp(span->to, 0.0, back.length()) : 0;
        const Vec3 first = back.at(length);
        runs_.push_back({{first}, angleAboutAxis(first)});
        appendSteps(first, b);
    }

    void touch(const Vec3& a, const Vec3& b) {
        const double below = limb_ - std::max(a.z, b.z);
        const Vec3 step = {b.x - a.x, b.y - a.y, b.z - a.z};
        if (below * below > dot(step, step)) return;
        const Arc arc(a, b);
        const auto span = arc.above(limb_);
        if (!span || span->from < 0 || span->to > arc.length()) return;
        if (span->to - span->from < kSliver) return;
        const Vec3 first = arc.at(span->from);
        runs_.push_back({{first}, angleAboutAxis(first)});
        append(arc, span->from, span->to);
        runs_.back().leaves = angleAboutAxis(runs_.back().points.back());
    }

    double limb_;
    std::vector<Run> runs_;
};

/// Counterclockwise from one angle to another, 0 to below 2 pi.
double turnBetween(double from, double to) {
    const double turn = to - from - 2 * kPi * std::floor((to - from) / (2 * kPi));
    return turn > 2 * kPi - kSameAngle ? 0 : turn;
}

/// The corners lie beyond the limb by so little that the edges touch it: much of the ground shows
/// in the last hundredth of a pixel, and a chord would leave it out.
void appendLimb(SphereLine& out, double from, double turn, double limb) {
    constexpr double kLimbStep = kStep / 4;
    if (!(turn > 0)) return;
    const double steps = std::ceil(turn / kLimbStep);
    const double radius = std::sqrt(1 - limb * limb) / std::cos(turn / steps / 2);
    for (double i = 0; i <= steps; ++i) {
        const double angle = from + turn * (i / steps);
        out.push_back({radius * std::cos(angle), radius * std::sin(angle), limb});
    }
}

/// The run that comes over the limb first, counterclockwise from where another one left it.
std::size_t nextRun(const std::vector<Run>& runs, double leaves, const std::vector<bool>& isUsed,
                    std::size_t first) {
    std::size_t best = first;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (isUsed[i] && i != first) continue;
        if (turnBetween(leaves, runs[i].enters) < turnBetween(leaves, runs[best].enters)) best = i;
    }
    return best;
}

/// Joins runs of a ring with its inside on the left. From where such a ring goes behind the limb,
/// the inside lies along the limb counterclockwise, up to where it comes back.
std::vector<SphereLine> joinedAlongLimb(const std::vector<Run>& runs, double limb) {
    std::vector<SphereLine> result;
    std::vector<bool> isUsed(runs.size(), false);
    for (std::size_t first = 0; first < runs.size(); ++first) {
        if (isUsed[first]) continue;
        SphereLine shape;
        std::size_t i = first;
        do {
            isUsed[i] = true;
            shape.insert(shape.end(), runs[i].points.begin(), runs[i].points.end());
            const std::size_t next = nextRun(runs, runs[i].leaves, isUsed, first);
            appendLimb(shape, runs[i].leaves, turnBetween(runs[i].leaves, runs[next].enters), limb);
            i = next;
        } while (i != first);
        result.push_back(std::move(shape));
    }
    return result;
}

SphereLine wholeDisc(double limb) {
    SphereLine disc;
    appendLimb(disc, 0, 2 * kPi, limb);
    disc.pop_back();
    return disc;
}

/// What of a ring is before the limb, in whole pieces; the ring itself, closed, if all of it is.
std::vector<Run> runsOf(SphereLine ring, double limb, bool& isWhole) {
    LimbCutter cutter(limb);
    const auto hidden = std::find_if_not(ring.begin(), ring.end(),
                                         [&](const Vec3& p) { return cutter.isVisible(p); });
    isWhole = hidden == ring.end();
    if (!isWhole) std::rotate(ring.begin(), hidden, ring.end());
    ring.push_back(ring.front());
    cutter.begin(ring.front());
    for (std::size_t i = 1; i < ring.size(); ++i) cutter.edge(ring[i - 1], ring[i]);
    return cutter.takeRuns();
}

/// Whether the limb, which no ring crosses, lies on the left of the rings; unknown without one.
/// Nothing lies between the limb and the corner that is nearest to it: the limb is beyond that
/// corner, thus outside where the ring turns to the left there. In the angle about the axis and the
/// height, the limb is a straight line.
std::optional<bool> isLimbInside(const std::vector<SphereLine>& rings, double limb) {
    double nearest = 2;
    std::optional<bool> result;
    for (const SphereLine& ring : rings) {
        for (std::size_t i = 0; i < ring.size() && ring.size() >= 3; ++i) {
            const Vec3& corner = ring[i];
            if (std::abs(corner.z - limb) >= nearest) continue;
            nearest = std::abs(corner.z - limb);
            const Vec3& before = ring[(i + ring.size() - 1) % ring.size()];
            const Vec3& after = ring[(i + 1) % ring.size()];
            const double in = angleAround(before, corner);
            const double out = angleAround(corner, after);
            const double turn = in * (after.z - corner.z) - (corner.z - before.z) * out;
            const bool goesLeftOfLimb = (in + out > 0) == (corner.z < limb);
            result = turn == 0 ? goesLeftOfLimb : turn < 0;
        }
    }
    return result;
}

/// Whether the axis stands in the side on the left, which is the smaller one.
bool isAxisInside(const SphereLine& ring) {
    const int turns = turnsAboutAxis(ring);
    return turns == 0 ? areaAboutAxis(ring) < 0 : turns > 0;
}

}  // namespace

std::vector<SphereLine> visibleLine(const SphereLine& points, double limb) {
    if (points.empty()) return {};
    LimbCutter cutter(limb);
    cutter.begin(points.front());
    for (std::size_t i = 1; i < points.size(); ++i) cutter.edge(points[i - 1], points[i]);
    std::vector<SphereLine> result;
    for (Run& run : cutter.takeRuns()) {
        if (run.points.size() > 1) result.push_back(std::move(run.points));
    }
    return result;
}

std::vector<SphereLine> visibleArea(SphereLine ring, double limb) {
    if (ring.size() < 3) return {};
    bool isWhole = false;
    std::vector<Run> runs = runsOf(ring, limb, isWhole);
    if (isWhole) return {std::move(runs.front().points)};
    if (!isLeftSideSmaller(ring)) {
        std::reverse(ring.begin(), ring.end());
        runs = runsOf(ring, limb, isWhole);
    }
    if (!runs.empty()) return joinedAlongLimb(runs, limb);
    if (isAxisInside(ring)) return {wholeDisc(limb)};
    return {};
}

std::vector<SphereLine> visibleRegion(const std::vector<SphereLine>& rings, double limb,
                                      bool isAllWithoutRings) {
    std::vector<SphereLine> result;
    std::vector<Run> cut;
    for (const SphereLine& ring : rings) {
        if (ring.size() < 3) continue;
        bool isWhole = false;
        std::vector<Run> runs = runsOf(ring, limb, isWhole);
        if (isWhole) {
            result.push_back(std::move(runs.front().points));
        } else {
            std::move(runs.begin(), runs.end(), std::back_inserter(cut));
        }
    }
    if (!cut.empty()) {
        std::vector<SphereLine> joined = joinedAlongLimb(cut, limb);
        std::move(joined.begin(), joined.end(), std::back_inserter(result));
    } else if (isLimbInside(rings, limb).value_or(isAllWithoutRings)) {
        result.push_back(wholeDisc(limb));
    }
    return result;
}

}  // namespace veloran
