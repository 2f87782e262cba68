#include <benchmark/benchmark.h>

#include "orbit/look_angles.h"
#include "orbit/sgp4.h"
#include "synthetic_catalogue.h"

namespace veloran::bench {
namespace {

/// A day in steps that repeat after no whole number of orbits.
double secondsOfStep(std::size_t step) {
    return static_cast<double>(step % 1440) * 61.7;
}

void onePropagation(benchmark::State& state) {
    const auto satrec = records(lowOrbits(1)).front();
    std::size_t step = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(propagate(*satrec, secondsOfStep(step++) / 60));
    }
}
BENCHMARK(onePropagation);

void oneLookAngle(benchmark::State& state) {
    const auto satrec = records(lowOrbits(1)).front();
    std::size_t step = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(lookAngles(*satrec, kDay + secondsOfStep(step++), kLatitude,
                                            kLongitude, kAltitude / 1000));
    }
}
BENCHMARK(oneLookAngle);

void oneCalendarStep(benchmark::State& state) {
    std::size_t step = 0;
    for (auto _ : state) benchmark::DoNotOptimize(jdayFromDate(kDay + secondsOfStep(step++)));
}
BENCHMARK(oneCalendarStep);

void oneRecord(benchmark::State& state) {
    auto satrec = *records(lowOrbits(1)).front();
    for (auto _ : state) {
        sgp4init(satrec);
        benchmark::DoNotOptimize(satrec);
    }
}
BENCHMARK(oneRecord);

}  // namespace
}  // namespace veloran::bench
