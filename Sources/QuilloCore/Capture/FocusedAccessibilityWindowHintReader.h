#pragma once

#include <cstdint>
#include <optional>

#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Capture/FrontmostWindowSelector.h"
#include "QuilloCore/Support/Clocks.h"

namespace quillo {

/// Asks an application which of its windows has the focus. It is asked while the user waits for the shortcut, so that
/// an application that does not answer at once gives no hint.
class FocusedAccessibilityWindowHintReader {
 public:
  /// Seconds that each message may take.
  static constexpr double messagingTimeout = 0.05;

  /// Seconds that the reading may take in all: finding the application, asking for its window, reading that one.
  static constexpr double readingTimeout = 4 * messagingTimeout;

  /// The interface outlives this.
  explicit FocusedAccessibilityWindowHintReader(AccessibilityInterface& interface,
                                                UptimeProvider uptimeProvider = systemUptimeNanoseconds);

  /// Nothing when there is no such application, no access, no focused window or no answer in time.
  std::optional<FocusedAccessibilityWindowHint> read(std::int32_t processIdentifier);

 private:
  AccessibilityInterface& interface_;
  UptimeProvider uptimeProvider_;
};

}  // namespace quillo
