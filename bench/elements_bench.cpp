#include <benchmark/benchmark.h>

#include "base/json.h"
#include "elements/element_merge.h"
#include "elements/omm_parser.h"
#include "elements/tle_parser.h"
#include "synthetic_catalogue.h"

namespace veloran::bench {
namespace {

const std::string& wholeCatalogue() {
    static const std::string text = groupText(syntheticCatalogue(11000));
    return text;
}

/// The text as a tree of values.
void readJsonOf11000(benchmark::State& state) {
    const auto& text = wholeCatalogue();
    for (auto _ : state) benchmark::DoNotOptimize(parseJson(text));
}
BENCHMARK(readJsonOf11000)->Unit(benchmark::kMillisecond);

/// Text to element sets with their lines.
void parseGroupOf11000(benchmark::State& state) {
    const auto& text = wholeCatalogue();
    for (auto _ : state) benchmark::DoNotOptimize(OMMParser::parse(text));
}
BENCHMARK(parseGroupOf11000)->Unit(benchmark::kMillisecond);

void mergeTwoGroupsOf11000(benchmark::State& state) {
    const auto sets = OMMParser::parse(wholeCatalogue());
    const std::vector<std::vector<TLEData>> lists{sets, sets};
    for (auto _ : state) benchmark::DoNotOptimize(mergeElements(lists));
}
BENCHMARK(mergeTwoGroupsOf11000)->Unit(benchmark::kMillisecond);

void recordsOf11000(benchmark::State& state) {
    const auto sets = OMMParser::parse(wholeCatalogue());
    for (auto _ : state) {
        for (const auto& set : sets) benchmark::DoNotOptimize(TLEParser::createSatRec(set));
    }
}
BENCHMARK(recordsOf11000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace veloran::bench
