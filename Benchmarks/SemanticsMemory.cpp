// The memory that reading, normalising and rendering a snapshot needs at its peak, beside the size of the snapshot's
// JSON. Each case runs in a program of its own, so that none profits from what another, or the making of the snapshot,
// has left behind. Arguments are snapshots to be measured instead of synthetic ones.

#include <fmt/format.h>
#include <sys/mman.h>
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

constexpr const char* measureOption = "--measure-standard-input";

/// A figure of this process's memory, in bytes.
double memory(std::string_view name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name)) return std::strtod(line.c_str() + name.size() + 1, nullptr) * 1024;
  }
  return 0;
}

std::string readAll(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string readNormalizeAndRender(const std::string& json, double& afterReading) {
  const auto snapshot = decodeJson<AccessibilitySnapshot>(json);
  afterReading = memory("VmHWM");
  return InterfaceObservationLLMRenderer::render(AccessibilitySemanticNormalizer::normalize(snapshot, {}));
}

/// Prints the line of the snapshot on standard input.
void measureStandardInput(std::string_view label) {
  double afterReading = 0;
  // The pages of the program itself are no part of what a snapshot needs.
  readNormalizeAndRender(encodeJson(makePage(30), JsonStyle::compact), afterReading);
  const std::string json = readAll("/proc/self/fd/0");
  std::ofstream("/proc/self/clear_refs") << 5;  // the peak begins here
  const double before = memory("VmRSS") - static_cast<double>(json.size());
  const std::string text = readNormalizeAndRender(json, afterReading);
  const double peak = memory("VmHWM") - before;
  constexpr double megabyte = 1024.0 * 1024.0;
  fmt::print("{:<32}{:>10.2f}{:>18.2f}{:>10.2f}{:>8.1f}  {}\n", label, static_cast<double>(json.size()) / megabyte,
             (afterReading - before) / megabyte, peak / megabyte, peak / static_cast<double>(json.size()),
             text.empty() ? "no text" : "at most 8");
}

void measure(const AccessibilitySnapshot& snapshot, const char* label) {
  const std::string json = encodeJson(snapshot, JsonStyle::compact);
  const int input = ::memfd_create(label, 0);
  if (input < 0 || ::write(input, json.data(), json.size()) != std::ssize(json)) std::abort();
  ::lseek(input, 0, SEEK_SET);
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(input, STDIN_FILENO);
    ::execl("/proc/self/exe", "SemanticsMemory", measureOption, label, nullptr);
    ::_exit(1);
  }
  int status = 0;
  if (::waitpid(child, &status, 0) < 0 || status != 0) std::abort();
  ::close(input);
}

}  // namespace
}  // namespace quillo::bench

int main(int argc, char** argv) {
  using namespace quillo::bench;
  if (argc == 3 && std::string_view(argv[1]) == measureOption) {
    measureStandardInput(argv[2]);
    return 0;
  }
  fmt::print("{:<32}{:>10}{:>18}{:>10}{:>8}  {}\n", "memory", "JSON (MB)", "after reading", "peak", "ratio",
             "promised");
  std::fflush(stdout);
  for (int i = 1; i < argc; ++i) {
    const std::string_view path = argv[i];
    measure(quillo::decodeJson<quillo::AccessibilitySnapshot>(readAll(argv[i])),
            argv[i] + (path.rfind('/') + 1));  // NOLINT(*-pointer-arithmetic): the rest of an argument
  }
  if (argc > 1) return 0;
  measure(makePage(10'000), "page/10000");
  measure(makePage(40'000), "page/40000");
  measure(makeDocument(100'000), "documentOfWords/100000");
  measure(makeTable(5'000, 10), "tableOfTenColumns/5000");
  return 0;
}
