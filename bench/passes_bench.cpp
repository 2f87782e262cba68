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

/// Of the plain search, per pass, over every satellite.
double plainEvaluations(const Records& satrecs) {
    std::size_t evaluations = 0;
    std::size_t passes = 0;
    for (const auto& satrec : satrecs) {
        const PassPredictor predictor(
            [&](Instant at) {
                ++evaluations;
                return lookAngles(*satrec, at, kLatitude, kLongitude, kAltitude / 1000);
            },
            kLatitude, kLongitude, kAltitude);
        passes += predictor.findPasses(kDay).size();
    }
    return static_cast<double>(evaluations) / static_cast<double>(passes);
}

void search(benchmark::State& state, const Records& satrecs, unsigned threads) {
    std::size_t passes = 0;
    for (auto _ : state) passes = searchAll(satrecs, threads);
    state.counters["passes"] = static_cast<double>(passes);
    // The whole catalogue's count would take as long as the benchmark.
    const Records some(satrecs.begin(), satrecs.begin() + static_cast<long>(std::min<std::size_t>(
                                                              satrecs.size(), 200)));
    state.counters["plain evaluations/pass"] = plainEvaluations(some);
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
