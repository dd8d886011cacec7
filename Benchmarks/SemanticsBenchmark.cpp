// Normalising and rendering, beside reading the same snapshot from its JSON and beside half the work.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <string>

#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "QuilloCore/Semantics/InterfaceObservationLLMRenderer.h"
#include "RatioTable.h"
#include "SyntheticSnapshots.h"

namespace quillo::bench {
namespace {

void normalizeAndRender(benchmark::State& state, const AccessibilitySnapshot& snapshot) {
  for (auto _ : state) {
    const auto observation = AccessibilitySemanticNormalizer::normalize(snapshot, {});
    benchmark::DoNotOptimize(InterfaceObservationLLMRenderer::render(observation));
  }
}

void page(benchmark::State& state) {
  normalizeAndRender(state, makePage(state.range(0)));
}
void documentOfWords(benchmark::State& state) {
  normalizeAndRender(state, makeDocument(state.range(0)));
}
void tableOfTenColumns(benchmark::State& state) {
  normalizeAndRender(state, makeTable(state.range(0), 10));
}

void readPageFromJson(benchmark::State& state) {
  const std::string json = encodeJson(makePage(state.range(0)), JsonStyle::compact);
  for (auto _ : state) benchmark::DoNotOptimize(decodeJson<AccessibilitySnapshot>(json));
}

BENCHMARK(readPageFromJson)->Arg(10'000)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(page)->Arg(10'000)->Arg(20'000)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(documentOfWords)->Arg(100'000)->Arg(200'000)->Unit(benchmark::kMillisecond)->Repetitions(3);
BENCHMARK(tableOfTenColumns)->Arg(2'500)->Arg(5'000)->Unit(benchmark::kMillisecond)->Repetitions(3);

}  // namespace
}  // namespace quillo::bench

int main(int argc, char** argv) {
  // Large pieces of memory come from the system anew in every run, as in a program that does this once. By default
  // those of the smaller size are kept, and only the larger one pays.
  ::mallopt(M_MMAP_THRESHOLD, 128 * 1024);
  benchmark::Initialize(&argc, argv);
  quillo::bench::RatioTable table({
      {"page/10000", "readPageFromJson/10000", "under 60 ms"},
      {"page/20000", "page/10000", "at most 2.3"},
      {"documentOfWords/200000", "documentOfWords/100000", "at most 2.3"},
      {"tableOfTenColumns/5000", "tableOfTenColumns/2500", "at most 2.3"},
  });
  benchmark::RunSpecifiedBenchmarks(&table);
  return 0;
}
