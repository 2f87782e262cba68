#include <benchmark/benchmark.h>

#include <atomic>
#include <thread>

#include "orbit/pass_predictor.h"
#include "synthetic_catalogue.h"

namespace veloran::bench {
namespace {

using Records = std::vector<std::shared_ptr<const SatRec>>;

/// Searches one day for each, on as many threads as told; gives the number of passes.
std::size_t searchAll(const Records& satrecs, unsigned threads) {
    std::atomic<std::size_t> next = 0;
    std::atomic<std::size_t> passes = 0;
    const auto work = [&] {
        for (auto i = next++; i < satrecs.size(); i = next++) {
            const PassPredictor predictor(satrecs[i], kLatitude, kLongitude, kAltitude);
            passes += predictor.findPasses(kDay).size();
        }
    };
    std::vector<std::jthread> pool;
    for (unsigned i = 1; i < threads; ++i) pool.emplace_back(work);
    work();
    pool.clear();
    return passes;
}

/// How often the satellite's place is asked for with each pass that is found.
struct Evaluations {
    std::size_t looks = 0;
    std::size_t heights = 0;
    std::size_t estimates = 0;
    std::size_t passes = 0;
};

class CountedHeights final : public Heights {
  public:
    CountedHeights(std::unique_ptr<Heights> heights, Evaluations& count)
        : heights_(std::move(heights)), count_(count) {}

    Height exactly(Instant at) override {
        ++count_.heights;
        return heights_->exactly(at);
    }
    Height about(Instant at) override {
        const Height height = heights_->about(at);
        ++(height.margin > 0 ? count_.estimates : count_.heights);
        return height;
    }

  private:
    std::unique_ptr<Heights> heights_;
    Evaluations& count_;
};

Evaluations evaluations(const Records& satrecs, bool isPlain) {
    Evaluations count;
    for (const auto& satrec : satrecs) {
        const SkyFunctions sky = satelliteSky(satrec, kLatitude, kLongitude, kAltitude);
        SkyFunctions counting{[&](Instant at) {
            ++count.looks;
            return sky.observe(at);
        }};
        if (!isPlain) {
            counting.heightsBetween = [&](Instant from, Instant to) {
                return std::make_unique<CountedHeights>(sky.heightsBetween(from, to), count);
            };
        }
        const PassPredictor predictor(counting, kLatitude, kLongitude, kAltitude);
        count.passes += predictor.findPasses(kDay).size();
    }
    return count;
}

void search(benchmark::State& state, const Records& satrecs, unsigned threads) {
    std::size_t passes = 0;
    for (auto _ : state) passes = searchAll(satrecs, threads);
    // To count over the whole catalogue would take as long as the benchmark.
    const auto counted = static_cast<long>(std::min<std::size_t>(satrecs.size(), 200));
    const Records some(satrecs.begin(), satrecs.begin() + counted);
    const auto actual = evaluations(some, false);
    const auto perPass = [&](std::size_t n) {
        return static_cast<double>(n) / static_cast<double>(actual.passes);
    };
    state.counters["passes"] = static_cast<double>(passes);
    state.counters["looks/pass"] = perPass(actual.looks);
    state.counters["heights/pass"] = perPass(actual.heights);
    state.counters["estimates/pass"] = perPass(actual.estimates);
    state.counters["plain looks/pass"] = perPass(evaluations(some, true).looks);
}

void passesOfOneLowOrbit(benchmark::State& state) {
    search(state, records(lowOrbits(1)), 1);
}
BENCHMARK(passesOfOneLowOrbit)->Unit(benchmark::kMillisecond);

void passesOf20Selected(benchmark::State& state) {
    search(state, records(syntheticCatalogue(20)), 1);
}
BENCHMARK(passesOf20Selected)->Unit(benchmark::kMillisecond);

void passesOf100LowOrbits(benchmark::State& state) {
    search(state, records(lowOrbits(100)), 1);
}
BENCHMARK(passesOf100LowOrbits)->Unit(benchmark::kMillisecond);

void passesOf11000(benchmark::State& state) {
    search(state, records(syntheticCatalogue(11000)), std::thread::hardware_concurrency());
}
BENCHMARK(passesOf11000)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
}  // namespace veloran::bench
