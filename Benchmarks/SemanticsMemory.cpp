// The memory that reading, normalising and rendering a snapshot needs at its peak, beside the size of the snapshot's
// JSON. Each case runs in a process of its own, so that none profits from what another has left behind. Arguments are
// snapshots to be measured instead of synthetic ones.

#include <fmt/format.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "QuilloCore/Semantics/InterfaceObservationLLMRenderer.h"
#include "SyntheticSnapshots.h"

namespace quillo::bench {
namespace {

/// A figure of this process's memory, in bytes.
double memory(std::string_view name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name)) return std::strtod(line.c_str() + name.size() + 1, nullptr) * 1024;
  }
  return 0;
}

void readNormalizeAndRender(const std::string& json, std::string_view label) {
  std::ofstream("/proc/self/clear_refs") << 5;  // the peak begins here
  const double before = memory("VmRSS");
  const auto size = static_cast<double>(json.size());
  const auto snapshot = decodeJson<AccessibilitySnapshot>(json);
  const double afterReading = memory("VmHWM") - before;
  const auto observation = AccessibilitySemanticNormalizer::normalize(snapshot, {});
  const auto text = InterfaceObservationLLMRenderer::render(observation);
  const double peak = memory("VmHWM") - before + size;
  constexpr double megabyte = 1024.0 * 1024.0;
  fmt::print("{:<24}{:>10.1f}{:>18.1f}{:>14.1f}{:>9.1f}  {}\n", label, size / megabyte, afterReading / megabyte,
             peak / megabyte, peak / size, text.empty() ? "no text" : "at most 8");
}

void measure(const AccessibilitySnapshot& snapshot, std::string_view label) {
  const std::string json = encodeJson(snapshot, JsonStyle::compact);
  ::malloc_trim(0);
  const pid_t child = ::fork();
  if (child == 0) {
    readNormalizeAndRender(json, label);
    std::fflush(stdout);
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
}

}  // namespace
}  // namespace quillo::bench

int main(int argc, char** argv) {
  using namespace quillo::bench;
  fmt::print("{:<24}{:>10}{:>18}{:>14}{:>9}  {}\n", "memory", "JSON (MB)", "after reading", "peak", "ratio",
             "promised");
  std::fflush(stdout);
  for (int i = 1; i < argc; ++i) {
    std::ifstream file(argv[i]);
    const std::string json{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::string_view name = argv[i];
    measure(quillo::decodeJson<quillo::AccessibilitySnapshot>(json), name.substr(name.rfind('/') + 1));
  }
  if (argc > 1) return 0;
  measure(makePage(10'000), "page/10000");
  measure(makePage(40'000), "page/40000");
  measure(makeDocument(100'000), "documentOfWords/100000");
  measure(makeTable(5'000, 10), "tableOfTenColumns/5000");
  return 0;
}
