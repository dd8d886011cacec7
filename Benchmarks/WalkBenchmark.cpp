// The walk without a platform: an application that lives in memory answers every call, so that what is timed is the
// core's own work (and the answering). Each case stands beside one of half its size: what grows faster is no walk.

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "QuilloCore/Capture/AccessibilitySnapshotCapture.h"
#include "RatioTable.h"
#include "Tests/Support/FakeAccessibilityInterface.h"
#include "Tests/Support/FixedWallClock.h"

namespace quillo::bench {
namespace {

using test::FakeAccessibilityInterface;

void capture(benchmark::State& state, FakeAccessibilityInterface& application, std::int64_t expectedNodeCount) {
  application.recordsCalls = false;
  test::FixedWallClock clock;
  WindowCaptureTarget target;
  target.processIdentifier = FakeAccessibilityInterface::processIdentifier;
  target.windowID = 7;
  for (auto _ : state) {
    const auto control = std::make_shared<AccessibilityCaptureControl>(120);
    const auto snapshot = captureAccessibilitySnapshot(application, clock, {}, target, control);
    if (snapshot.nodeCount != expectedNodeCount) state.SkipWithError("not everything was captured");
  }
}

AccessibilityElement addWindow(FakeAccessibilityInterface& application) {
  return application.addWindows("window 'Window' number=7 frame=0,0,1000,700").front();
}

// Rows of ten texts, 200 characters each.
void pageOfTexts(benchmark::State& state) {
  FakeAccessibilityInterface application;
  const auto window = addWindow(application);
  std::string text;
  while (text.size() < 200) text += "lorem ipsum dolor sit amet ";
  text.resize(200);
  std::vector<AccessibilityElement> rows;
  std::int64_t count = 1;
  for (; count + 11 <= state.range(0); count += 11) {
    rows.push_back(application.add());
    application[rows.back()].attributes = {{"AXRole", std::string("AXRow")}, {"AXIndex", count}};
    std::vector<AccessibilityElement> cells(10);
    for (auto& cell : cells) {
      cell = application.add();
      application[cell].attributes = {{"AXRole", std::string("AXStaticText")},
                                      {"AXValue", text},
                                      {"AXEnabled", true},
                                      {"AXFocused", false},
                                      {"AXPosition", ArtifactPoint{10, 10}},
                                      {"AXSize", ArtifactSize{100, 20}}};
    }
    application.setChildren(rows.back(), cells);
  }
  application.setChildren(window, rows);
  capture(state, application, count);
}

// One list, of which the node limit leaves most out.
void longList(benchmark::State& state) {
  FakeAccessibilityInterface application;
  const auto window = addWindow(application);
  std::vector<AccessibilityElement> rows(static_cast<std::size_t>(state.range(0)));
  for (auto& row : rows) row = application.add();
  application.setChildren(window, rows);
  capture(state, application, std::min<std::int64_t>(state.range(0) + 1, 10'000));
}

// Documents that all reach each other.
void ringOfDocuments(benchmark::State& state) {
  FakeAccessibilityInterface application;
  const auto window = addWindow(application);
  std::vector<AccessibilityElement> documents(static_cast<std::size_t>(state.range(0)));
  for (auto& document : documents) {
    document = application.add();
    application[document].attributes = {{"AXRole", std::string("AXWebArea")}, {"AXChildren", std::vector{window}}};
  }
  application.setChildren(window, documents);
  capture(state, application, state.range(0) + 1);
}

BENCHMARK(pageOfTexts)->Arg(5'000)->Arg(10'000)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(longList)->Arg(25'000)->Arg(50'000)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(ringOfDocuments)->Arg(4'000)->Arg(8'000)->Unit(benchmark::kMillisecond)->Repetitions(5);

}  // namespace
}  // namespace quillo::bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  quillo::bench::RatioTable table({
      {"pageOfTexts/10000", "pageOfTexts/5000", "at most 2.3"},
      {"longList/50000", "longList/25000", "at most 2.3"},
      {"ringOfDocuments/8000", "ringOfDocuments/4000", "at most 2.3"},
  });
  benchmark::RunSpecifiedBenchmarks(&table);
  return 0;
}
