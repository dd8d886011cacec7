// Pastes into the focused field of a process several times, without the pauses, and prints one line: the median
// milliseconds of a delivery's own work, of freezing the destination, and of one look at whether it is current. Called
// by run-paste.

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "QuilloCore/Clipboard/ClipboardPayloadWriter.h"
#include "QuilloCore/Clipboard/SystemPasteboardSession.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/SystemMonotonicClock.h"
#include "QuilloCore/Paste/AccessibilityPasteDestination.h"
#include "QuilloCore/Paste/PasteDeliveryService.h"
#include "QuilloCore/Paste/PasteMessages.h"
#include "QuilloLinux/Accessibility/AtspiFocusedElement.h"
#include "QuilloLinux/Clipboard/X11Pasteboard.h"
#include "QuilloLinux/Keyboard/X11InputFocus.h"
#include "QuilloLinux/Keyboard/X11PasteKeystroke.h"
#include "QuilloLinux/Keyboard/X11PhysicalModifiers.h"

namespace quillo {
namespace {

template <class Operation>
double medianMilliseconds(int count, const Operation& operation) {
  using namespace std::chrono_literals;
  std::vector<double> milliseconds;
  for (int i = 0; i < count; ++i) {
    const auto started = std::chrono::steady_clock::now();
    operation();
    milliseconds.push_back(
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started).count());
    std::this_thread::sleep_for(50ms);  // for the program to take in what was pasted
  }
  std::ranges::sort(milliseconds);
  return milliseconds[milliseconds.size() / 2];
}

void measure(std::int32_t processIdentifier, int count, const std::string& screenshot) {
  std::ifstream file(screenshot, std::ios::binary);
  const ClipboardPayload payload{.captureID = {},
                                 .pngData = std::string(std::istreambuf_iterator<char>(file), {}),
                                 .plainText = std::string(50'000, 'w')};

  SystemMonotonicClock clock;
  BlockingLoop loop;
  X11InputFocus inputFocus;
  AtspiFocusedElement focusedElement;
  X11PasteKeystroke keystroke;
  X11PhysicalModifiers modifiers;
  ClockModifierReleaseSleeping sleeping(clock);
  AccessibilityPasteDestination destination({inputFocus, focusedElement, keystroke, clock});
  X11Pasteboard pasteboard;
  ClipboardPayloadWriter writer;
  SystemPasteboardSession session(pasteboard, writer);
  PasteDeliveryService service({session, destination, modifiers, sleeping, clock}, loop.executor(),
                               PasteDeliveryService::Configuration::immediate);

  FrozenPasteTarget target;
  const double freezing = medianMilliseconds(count, [&] {
    const auto frozen = loop.run([&] { return service.freezeTarget(processIdentifier); });
    if (!frozen) throw std::runtime_error("the process does not have the focus");
    target = *frozen;
  });
  const double checking = medianMilliseconds(count, [&] { loop.run([&] { return destination.isCurrent(target); }); });
  const double delivering = medianMilliseconds(count, [&] {
    const auto result = loop.run([&] { return service.deliver(payload, target, AccessibilityTrustPrompt::silent); });
    if (!isDelivered(result)) throw std::runtime_error(pasteMessage(result));
  });
  fmt::print("{:.2f} {:.2f} {:.2f}\n", delivering, freezing, checking);
}

}  // namespace
}  // namespace quillo

int main(int argumentCount, char** arguments) {
  if (argumentCount != 4) {
    fmt::print(stderr, "usage: PasteBenchmark PID COUNT SCREENSHOT\n");
    return 2;
  }
  try {
    quillo::measure(std::atoi(arguments[1]), std::max(1, std::atoi(arguments[2])), arguments[3]);
  } catch (const std::exception& error) {
    fmt::print(stderr, "PasteBenchmark: {}\n", error.what());
    return 1;
  }
  return 0;
}
