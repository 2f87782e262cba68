#include "orbit/pass_predictor.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace veloran {

namespace {

/// A pass ends for the search only this far (degrees) below the horizon, so that a dip or noise at
/// the crossing does not cut it in two.
constexpr double exitElevation = -1.0;
constexpr double shortestPassSeconds = 30.0;
constexpr int bisections = 25;

/// Far below the horizon nothing happens within a minute; near it passes may be short.
constexpr double farStep = 60.0;
constexpr double nearElevation = -2.0;

double searchStep(bool inPass, double elevation) {
    if (inPass) return 10.0;
    if (elevation < Heights::farBelow) return farStep;
    if (elevation < nearElevation) return 20.0;
    return 10.0;
}

Instant middle(Instant lo, Instant hi) {
    return lo + (hi - lo) / 2.0;
}

/// Heights by look angles alone.
class ObservedHeights final : public Heights {
  public:
    explicit ObservedHeights(const SkyFunctions& sky) : sky_(sky) {}

    Height exactly(Instant at) override {
        const auto look = sky_.observe(at);
        return {look ? look->elevation : -90.0, 0.0, at};
    }
    Height about(Instant at) override { return exactly(at); }

  private:
    const SkyFunctions& sky_;
};

bool isExact(const Heights::Height& height) {
    return height.margin == 0.0;
}

/// Whether a height within the margin lies on the same side of a threshold as the exact one.
bool isClearOf(const Heights::Height& height, double threshold) {
    return isExact(height) || std::abs(height.elevation - threshold) > height.margin;
}

bool isClearOf(const Heights::Height& a, const Heights::Height& b) {
    return (isExact(a) && isExact(b)) || std::abs(a.elevation - b.elevation) > a.margin + b.margin;
}

}  // namespace

/// One run of the search over one span.
class PassPredictor::Search {
  public:
    Search(const SkyFunctions& sky, Instant start, Instant end)
        : sky_(sky), start_(start), end_(end) {
        // Before the start, too: a body that is up there rises up to a step earlier.
        heights_ = sky.heightsBetween ? sky.heightsBetween(start - farStep, end)
                                      : std::make_unique<ObservedHeights>(sky);
    }

    PassList passes(double minElevation);

  private:
    using Height = Heights::Height;

    /// A pass that has begun: the sample with the highest elevation so far is where the search for
    /// its end starts.
    struct OpenPass {
        Instant riseTime;
        double riseAzimuth = 0;
        Instant highestTime;
        Height highest;
    };
    struct Peak {
        Instant time;
        double elevation = 0;
        double azimuth = 0;
    };

    // Each of these decides as the exact heights would, and computes them where estimates do not
    // suffice.
    Height sample(Instant at, bool isNear);
    bool isUp(Instant at);
    bool isLower(Instant a, Instant b);
    bool isHighest(Height& sample, Instant at, OpenPass& pass);
    bool reaches(double minElevation, const OpenPass& pass);

    double azimuthOrZero(Instant at) const;
    OpenPass openPass(Instant firstAbove, const Height& first, double step);
    /// Absent if the pass is too short to count.
    std::optional<PredictedPass> closePass(const OpenPass& pass, Instant setTime);
    Instant refineRise(Instant before, double step);
    Instant refineSet(Instant after, Instant before);
    Peak refinePeak(Instant lo, Instant hi);
    std::vector<PassPoint> generateTrackPoints(Instant rise, Instant set) const;

    const SkyFunctions& sky_;
    std::unique_ptr<Heights> heights_;
    Instant start_;
    Instant end_;
};

PassPredictor::PassPredictor(SkyFunctions sky, double obsLat, double obsLon, double obsAltMeters)
    : sky_(std::move(sky)), obsLat_(obsLat), obsLon_(obsLon), obsAltKm_(obsAltMeters / 1000.0) {}

PassPredictor::PassPredictor(ObserveFn observeFn, double obsLat, double obsLon, double obsAltMeters)
    : PassPredictor(SkyFunctions{std::move(observeFn)}, obsLat, obsLon, obsAltMeters) {}

PassPredictor::PassPredictor(std::shared_ptr<const SatRec> satrec, double obsLat, double obsLon,
                             double obsAltMeters)
    : PassPredictor(satelliteSky(std::move(satrec), obsLat, obsLon, obsAltMeters), obsLat, obsLon,
                    obsAltMeters) {}

PassList PassPredictor::findPasses(Instant start, double hoursAhead, double minElevation,
                                   double /*stepSeconds*/) const {
    const Instant end = start + std::min(hoursAhead, maxSearchHours) * 3600.0;
    return Search(sky_, start, end).passes(minElevation);
}

/// On the same side of every threshold as the exact height. `isNear`: to the sample before.
Heights::Height PassPredictor::Search::sample(Instant at, bool isNear) {
    if (!isNear) return heights_->exactly(at);
    const Height height = heights_->about(at);
    for (const double threshold : {Heights::farBelow, nearElevation, exitElevation, 0.0}) {
        if (!isClearOf(height, threshold)) return heights_->exactly(at);
    }
    return height;
}

bool PassPredictor::Search::isUp(Instant at) {
    Height height = heights_->about(at);
    if (!isClearOf(height, 0.0)) height = heights_->exactly(at);
    return height.elevation > 0.0;
}

bool PassPredictor::Search::isLower(Instant a, Instant b) {
    Height first = heights_->about(a);
    Height second = heights_->about(b);
    if (!isClearOf(first, second)) {
        first = heights_->exactly(a);
        second = heights_->exactly(b);
    }
    return first.elevation < second.elevation;
}

bool PassPredictor::Search::isHighest(Height& sample, Instant at, OpenPass& pass) {
    if (!isClearOf(sample, pass.highest)) {
        if (!isExact(sample)) sample = heights_->exactly(at);
        if (!isExact(pass.highest)) pass.highest = heights_->exactly(pass.highestTime);
    }
    return sample.elevation > pass.highest.elevation;
}

bool PassPredictor::Search::reaches(double minElevation, const OpenPass& pass) {
    const Height highest =
        isClearOf(pass.highest, minElevation) ? pass.highest : heights_->exactly(pass.highestTime);
    return highest.elevation >= minElevation;
}

double PassPredictor::Search::azimuthOrZero(Instant at) const {
    const auto look = sky_.observe(at);
    return look ? look->azimuth : 0.0;
}

PassList PassPredictor::Search::passes(double minElevation) {
    PassList found;
    std::optional<OpenPass> open;
    const auto close = [&](Instant setTime) {
        if (auto pass = closePass(*open, setTime)) found.push_back(*std::move(pass));
    };

    Instant farBelowUntil = start_;
    double step = farStep;
    for (Instant t = start_; t < end_;) {
        Height height{-90.0, 0.0, farBelowUntil};
        if (open || t >= farBelowUntil) height = sample(t, step < farStep);
        farBelowUntil = height.farBelowUntil;
        step = searchStep(open.has_value(), height.elevation);
        if (open) {
            if (isHighest(height, t, *open)) {
                open->highest = height;
                open->highestTime = t;
            }
            if (height.elevation < exitElevation) {
                if (reaches(minElevation, *open)) close(refineSet(open->highestTime, t));
                open.reset();
            }
        } else if (height.elevation > 0.0) {
            open = openPass(t, height, step);
        }
        const Instant next = t + step;
        if (next <= t) break;  // so far from the reference date that a step is lost in rounding
        t = next;
    }
    if (open && reaches(minElevation, *open)) close(end_);
    return found;
}

PassPredictor::Search::OpenPass PassPredictor::Search::openPass(Instant firstAbove,
                                                                const Height& first, double step) {
    OpenPass pass;
    pass.riseTime = refineRise(firstAbove, step);
    pass.riseAzimuth = azimuthOrZero(pass.riseTime);
    pass.highestTime = firstAbove;
    pass.highest = first;
    return pass;
}

std::optional<PredictedPass> PassPredictor::Search::closePass(const OpenPass& pass,
                                                              Instant setTime) {
    const double duration = setTime - pass.riseTime;
    if (duration < shortestPassSeconds) return std::nullopt;
    const Peak peak = refinePeak(pass.riseTime, setTime);

    PredictedPass closed;
    closed.riseTime = pass.riseTime;
    closed.peakTime = peak.time;
    closed.setTime = setTime;
    closed.maxElevation = peak.elevation;
    closed.riseAzimuth = pass.riseAzimuth;
    closed.setAzimuth = azimuthOrZero(setTime);
    closed.peakAzimuth = peak.azimuth;
    closed.duration = duration;
    closed.trackPoints = generateTrackPoints(pass.riseTime, setTime);
    return closed;
}

/// Bisection of the step that ended above the horizon. A body that was up before it, as at the
/// start of a search, rises where the step began.
Instant PassPredictor::Search::refineRise(Instant before, double step) {
    Instant lo = before - step;
    Instant hi = before;
    for (int i = 0; i < bisections; ++i) {
        const Instant mid = middle(lo, hi);
        (isUp(mid) ? hi : lo) = mid;
    }
    return hi;
}

/// The first sample well below the horizon may lie long after the crossing, with the highest point
/// in between: a scan backwards narrows the bracket to the last crossing, then bisection.
Instant PassPredictor::Search::refineSet(Instant after, Instant before) {
    constexpr int scanParts = 20;
    Instant lo = after;
    Instant hi = before;
    const double span = before - after;
    for (int i = scanParts; i >= 0; --i) {
        const Instant date = after + span * i / scanParts;
        if (isUp(date)) {
            lo = date;
            break;
        }
        hi = date;
    }
    for (int i = 0; i < bisections; ++i) {
        const Instant mid = middle(lo, hi);
        (isUp(mid) ? lo : hi) = mid;
    }
    return lo;
}

/// Golden-section search for the highest elevation, to 0.1 s.
PassPredictor::Search::Peak PassPredictor::Search::refinePeak(Instant lo, Instant hi) {
    for (int i = 0; i < 30; ++i) {
        const double span = hi - lo;
        if (span < 0.1) break;
        const Instant m1 = lo + span * 0.381966;
        const Instant m2 = lo + span * 0.618034;
        if (isLower(m1, m2)) {
            lo = m1;
        } else {
            hi = m2;
        }
    }
    const Instant time = middle(lo, hi);
    const auto look = sky_.observe(time);
    return {time, look ? look->elevation : 0.0, look ? look->azimuth : 0.0};
}

std::vector<PassPoint> PassPredictor::Search::generateTrackPoints(Instant rise, Instant set) const {
    const double duration = set - rise;
    const int n = static_cast<int>(std::clamp(std::trunc(duration / 10.0), 20.0, 200.0));
    std::vector<PassPoint> points;
    points.reserve(static_cast<std::size_t>(n) + 1);
    for (int i = 0; i <= n; ++i) {
        const Instant date = rise + duration * i / n;
        const auto look = sky_.observe(date);
        if (!look) continue;
        points.push_back({date, look->azimuth, look->elevation, look->range, look->rangeRate});
    }
    return points;
}

}  // namespace veloran
