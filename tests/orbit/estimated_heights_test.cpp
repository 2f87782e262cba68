#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <set>

#include "orbit/pass_predictor.h"
#include "same_pass.h"

// The search over heights that err by as much as their margin allows has to find what the exact
// ones give, in every digit.

namespace veloran::test {
namespace {

using Curve = std::function<double(double)>;  // seconds from the start to degrees

const Instant kStart{736344000.0};
constexpr double kHours = 4;

/// A number from -1 to 1 that nobody can tell from the moment.
double anything(Instant at) {
    const double mixed = std::sin((at - kStart) * 12.9898) * 43758.5453;
    return 2.0 * (mixed - std::floor(mixed)) - 1.0;
}

/// How an estimate errs, as a share of its margin from -1 to 1; absent where it is exact.
using Error = std::function<std::optional<double>(Instant at, double elevation)>;

class LyingHeights final : public Heights {
  public:
    LyingHeights(const Curve& curve, const Error& error, double margin, std::size_t& lies)
        : curve_(curve), error_(error), margin_(margin), lies_(lies) {}

    Height exactly(Instant at) override { return {curve_(at - kStart), 0.0, at}; }
    Height about(Instant at) override {
        const double elevation = curve_(at - kStart);
        const auto share = error_(at, elevation);
        if (!share) return exactly(at);
        ++lies_;
        return {elevation + 0.999 * *share * margin_, margin_, at};
    }

  private:
    const Curve& curve_;
    const Error& error_;
    double margin_;
    std::size_t& lies_;
};

struct Search {
    Curve curve;
    double minElevation = 2;

    std::optional<TopocentricResult> observe(Instant at) const {
        return TopocentricResult{(at - kStart) / 100.0, curve(at - kStart), 1000.0, 0.0};
    }
    PassList exactly() const {
        return PassPredictor([this](Instant at) { return observe(at); }, 0, 0, 0)
            .findPasses(kStart, kHours, minElevation);
    }
    PassList by(const Error& error, double margin, std::size_t& lies) const {
        const SkyFunctions sky{[this](Instant at) { return observe(at); },
                               [&](Instant, Instant) {
                                   return std::make_unique<LyingHeights>(curve, error, margin,
                                                                         lies);
                               }};
        return PassPredictor(sky, 0, 0, 0).findPasses(kStart, kHours, minElevation);
    }
};

const std::vector<Error>& errors() {
    static const std::vector<Error> all{
        [](Instant, double) { return 1.0; },
        [](Instant, double) { return -1.0; },
        [](Instant at, double) { return anything(at); },
        [](Instant at, double) { return anything(at) < 0.0 ? -1.0 : 1.0; },
        // To the other side of the thresholds, wherever the margin reaches one.
        [](Instant, double elevation) {
            for (const double threshold : {-10.0, -2.0, -1.0, 0.0, 2.0, 2.05}) {
                if (std::abs(elevation - threshold) < 0.5)
                    return elevation < threshold ? 1.0 : -1.0;
            }
            return 0.0;
        },
        // Exact here and there, as where an orbit gives no estimate.
        [](Instant at, double) {
            const double any = anything(at);
            return any < -0.3 ? std::nullopt : std::optional(any < 0.3 ? -1.0 : 1.0);
        },
        // Low ones too high, high ones too low.
        [](Instant, double elevation) { return std::cos(elevation * 3.0); },
    };
    return all;
}

/// The number of passes, of which there must be `expected`.
void expectTheSame(const Search& search, std::size_t expected) {
    const PassList right = search.exactly();
    ASSERT_EQ(right.size(), expected);
    std::size_t lies = 0;
    for (std::size_t e = 0; e < errors().size(); ++e) {
        for (const double margin : {1e-6, 1e-3, 0.04, 0.4}) {
            SCOPED_TRACE("error " + std::to_string(e) + ", margin " + std::to_string(margin));
            const PassList found = search.by(errors()[e], margin, lies);
            ASSERT_EQ(found.size(), right.size());
            for (std::size_t i = 0; i < right.size(); ++i) EXPECT_TRUE(same(found[i], right[i]));
        }
    }
    EXPECT_GT(lies, 1000U);
}

/// Hills of a height every 45 minutes, over a plain far below.
Curve hills(double height, double width) {
    return [=](double s) {
        const double x = (std::remainder(s - 1387.0, 2700.0)) / width;
        return std::max(height - x * x, -30.0);
    };
}

TEST(EstimatedHeights, OrdinaryPasses) {
    expectTheSame({hills(12.0, 80.0)}, 5);
    expectTheSame({hills(63.0, 47.0)}, 5);
}

TEST(EstimatedHeights, FlatTops) {
    // The highest sample is one of many that differ by less than any margin.
    expectTheSame({[](double s) { return 8.0 + 1e-7 * std::sin(s / 70.0) - 12.0 * (s > 9000.0); }},
                  1);
    expectTheSame({[](double s) { return 8.0 * std::tanh(6.0 * std::sin(s / 800.0)); }}, 3);
}

TEST(EstimatedHeights, TopsNextToTheMinimum) {
    for (const double above : {1e-7, 1e-4, 1e-2}) {
        const auto cutAt = [](double height) {
            return [=, hill = hills(30.0, 100.0)](double s) { return std::min(hill(s), height); };
        };
        expectTheSame({cutAt(20.0 + above), 20.0}, 5);
        expectTheSame({cutAt(20.0 - above), 20.0}, 0);
        expectTheSame({[above](double s) { return s < 7200.0 ? 2.0 + above : -5.0; }, 2.0}, 1);
        expectTheSame({[above](double s) { return s < 7200.0 ? 2.0 - above : -5.0; }, 2.0}, 0);
    }
}

TEST(EstimatedHeights, PointedTopsNextToTheMinimum) {
    // One sample alone lies near the minimum.
    std::set<std::size_t> counts;
    for (int i = 0; i < 20; ++i) {
        const Search search{hills(20.0, 20.0), 19.72 + 0.015 * i};
        counts.insert(search.exactly().size());
        expectTheSame(search, search.exactly().size());
    }
    EXPECT_GT(counts.size(), 1U) << "some reach it, and some do not";
}

TEST(EstimatedHeights, DipsNextToTheEndOfAPass) {
    // Every ten minutes down to about -1 degree, where a pass ends and the next may begin.
    const auto dips = [](double lowest) {
        return [lowest](double s) { return lowest + 3.0 - 3.0 * std::cos(s / 300.0); };
    };
    expectTheSame({dips(-1.0 + 1e-5)}, 1);
    expectTheSame({dips(-1.001)}, 8);
    expectTheSame({dips(-1.3)}, 8);
}

TEST(EstimatedHeights, CoursesAlongTheThresholds) {
    // Where the step of the search changes, and where a pass begins.
    for (const double level : {-10.0, -2.0, -1.0, 0.0}) {
        SCOPED_TRACE(level);
        const Search search{[level](double s) {
            return s < 10000.0 ? level + 0.02 * std::sin(s / 97.0) : 30.0 * std::sin(s / 1300.0);
        }};
        expectTheSame(search, search.exactly().size());
    }
}

}  // namespace
}  // namespace veloran::test
