// Reads a real window several times and prints one line: nodes, the median seconds of a walk, calls to the target for
// each node, the most calls in flight, and the process's peak memory in megabytes. Called by run-capture.

#include <fmt/format.h>
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <memory>
#include <vector>

#include "QuilloCore/Capture/AccessibilityContextCapturer.h"
#include "QuilloLinux/Accessibility/AtspiAccessibilityInterface.h"
#include "QuilloLinux/Windows/X11WindowList.h"

namespace quillo {
namespace {

WindowCaptureTarget targetOf(std::int32_t processIdentifier) {
  for (const WindowListEntry& entry : X11WindowList().onScreenFrontToBack()) {
    if (entry.processIdentifier != processIdentifier) continue;
    return {.processIdentifier = entry.processIdentifier,
            .applicationName = {},
            .bundleIdentifier = {},
            .windowID = entry.windowID,
            .windowFrame = entry.bounds,
            .windowTitle = entry.title,
            .equivalentFrames = entry.equivalentBounds};
  }
  throw std::runtime_error("the process shows no window");
}

void measure(std::int32_t processIdentifier, int count) {
  AtspiStatistics statistics;
  AtspiAccessibilityInterface accessibility([&](const AtspiStatistics& last) { statistics = last; });
  X11WindowList windowList;
  SystemWallClock wallClock;
  AccessibilityContextCapturer capturer(accessibility, windowList, wallClock);
  const WindowCaptureTarget target = targetOf(processIdentifier);
  std::vector<double> seconds;
  std::size_t nodes = 0;
  for (int i = 0; i < count; ++i) {
    const auto control = std::make_shared<AccessibilityCaptureControl>(capturer.configuration().captureTimeout);
    const auto started = std::chrono::steady_clock::now();
    nodes = capturer.captureSynchronously(target, control).nodes.size();
    seconds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count());
  }
  std::ranges::sort(seconds);
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  fmt::print("{} {:.4f} {:.1f} {} {:.0f}\n", nodes, seconds[seconds.size() / 2],
             static_cast<double>(statistics.callCount) / static_cast<double>(std::max<std::size_t>(nodes, 1)),
             statistics.largestInFlight, static_cast<double>(usage.ru_maxrss) / 1024);
}

}  // namespace
}  // namespace quillo

int main(int argumentCount, char** arguments) {
  if (argumentCount != 3) {
    fmt::print(stderr, "usage: CaptureBenchmark PID COUNT\n");
    return 2;
  }
  try {
    quillo::measure(std::atoi(arguments[1]), std::max(1, std::atoi(arguments[2])));
  } catch (const std::exception& error) {
    fmt::print(stderr, "CaptureBenchmark: {}\n", error.what());
    return 1;
  }
  return 0;
}
