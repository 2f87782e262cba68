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
double searchStep(bool inPass, double elevation) {
    if (inPass) return 10.0;
    if (elevation < -10.0) return 60.0;
    if (elevation < -2.0) return 20.0;
    return 10.0;
}

Instant middle(Instant lo, Instant hi) {
    return lo + (hi - lo) / 2.0;
}

}  // namespace

/// One run of the search over one span.
class PassPredictor::Search {
  public:
    Search(const SkyFunctions& sky, Instant start, Instant end)
        : sky_(sky), start_(start), end_(end) {
        // Before the start, too: a body that is up there rises up to a step earlier.
        if (sky.heightsBetween) height_ = sky.heightsBetween(start - 60.0, end);
    }

    PassList passes(double minElevation) const;

  private:
    /// A pass that has begun: the sample with the highest elevation so far is where the search for
    /// its end starts.
    struct OpenPass {
        Instant riseTime;
        double riseAzimuth = 0;
        Instant highestTime;
        double highestElevation = 0;
    };
    struct Peak {
        Instant time;
        double elevation = 0;
        double azimuth = 0;
    };

    SkyFunctions::Height height(Instant at) const;
    double elevation(Instant at) const { return height(at).elevation; }
    double azimuthOrZero(Instant at) const;
    OpenPass openPass(Instant firstAbove, double firstElevation, double step) const;
    /// Absent if the pass is too short to count.
    std::optional<PredictedPass> closePass(const OpenPass& pass, Instant setTime) const;
    Instant refineRise(Instant before, double step) const;
    Instant refineSet(Instant after, Instant before) const;
    Peak refinePeak(Instant lo, Instant hi) const;
    std::vector<PassPoint> generateTrackPoints(Instant rise, Instant set) const;

    const SkyFunctions& sky_;
    std::function<SkyFunctions::Height(Instant)> height_;
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

SkyFunctions::Height PassPredictor::Search::height(Instant at) const {
    if (height_) return height_(at);
    const auto look = sky_.observe(at);
    return {look ? look->elevation : -90.0, at};
}

double PassPredictor::Search::azimuthOrZero(Instant at) const {
    const auto look = sky_.observe(at);
    return look ? look->azimuth : 0.0;
}

PassList PassPredictor::Search::passes(double minElevation) const {
    PassList found;
    std::optional<OpenPass> open;
    const auto isHighEnough = [&] { return open->highestElevation >= minElevation; };
    const auto close = [&](Instant setTime) {
        if (auto pass = closePass(*open, setTime)) found.push_back(*std::move(pass));
    };

    Instant farBelowUntil = start_;
    for (Instant t = start_; t < end_;) {
        double el = -90.0;
        if (open || t >= farBelowUntil) {
            const SkyFunctions::Height sample = height(t);
            el = sample.elevation;
            farBelowUntil = sample.farBelowUntil;
        }
        const double step = searchStep(open.has_value(), el);
        if (open) {
            if (el > open->highestElevation) {
                open->highestElevation = el;
                open->highestTime = t;
            }
            if (el < exitElevation) {
                if (isHighEnough()) close(refineSet(open->highestTime, t));
                open.reset();
            }
        } else if (el > 0.0) {
            open = openPass(t, el, step);
        }
        const Instant next = t + step;
        if (next <= t) break;  // so far from the reference date that a step is lost in rounding
        t = next;
    }
    if (open && isHighEnough()) close(end_);
    return found;
}

PassPredictor::Search::OpenPass PassPredictor::Search::openPass(Instant firstAbove,
                                                                double firstElevation,
                                                                double step) const {
    OpenPass pass;
    pass.riseTime = refineRise(firstAbove, step);
    pass.riseAzimuth = azimuthOrZero(pass.riseTime);
    pass.highestTime = firstAbove;
    pass.highestElevation = firstElevation;
    return pass;
}

std::optional<PredictedPass> PassPredictor::Search::closePass(const OpenPass& pass,
                                                              Instant setTime) const {
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
Instant PassPredictor::Search::refineRise(Instant before, double step) const {
    Instant lo = before - step;
    Instant hi = before;
    for (int i = 0; i < bisections; ++i) {
        const Instant mid = middle(lo, hi);
        (elevation(mid) > 0.0 ? hi : lo) = mid;
    }
    return hi;
}

/// The first sample well below the horizon may lie long after the crossing, with the highest point
/// in between: a scan backwards narrows the bracket to the last crossing, then bisection.
Instant PassPredictor::Search::refineSet(Instant after, Instant before) const {
    constexpr int scanParts = 20;
    Instant lo = after;
    Instant hi = before;
    const double span = before - after;
    for (int i = scanParts; i >= 0; --i) {
        const Instant date = after + span * i / scanParts;
        if (elevation(date) > 0.0) {
            lo = date;
            break;
        }
        hi = date;
    }
    for (int i = 0; i < bisections; ++i) {
        const Instant mid = middle(lo, hi);
        (elevation(mid) > 0.0 ? lo : hi) = mid;
    }
    return lo;
}

/// Golden-section search for the highest elevation, to 0.1 s.
PassPredictor::Search::Peak PassPredictor::Search::refinePeak(Instant lo, Instant hi) const {
    for (int i = 0; i < 30; ++i) {
        const double span = hi - lo;
        if (span < 0.1) break;
        const Instant m1 = lo + span * 0.381966;
        const Instant m2 = lo + span * 0.618034;
        if (elevation(m1) < elevation(m2)) {
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
