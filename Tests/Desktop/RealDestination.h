#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <expected>

#include "PasteRecorder.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/SystemMonotonicClock.h"
#include "QuilloCore/Paste/AccessibilityPasteDestination.h"
#include "QuilloLinux/Accessibility/AtspiFocusedElement.h"
#include "QuilloLinux/Keyboard/X11InputFocus.h"
#include "QuilloLinux/Keyboard/X11PasteKeystroke.h"

namespace quillo::test {

/// The destination as the commands put it together.
struct RealDestination {
  using Resolution = std::expected<FrozenPasteTarget, PasteTargetFreezeError>;

  Resolution resolve(std::int32_t pid) {
    return loop.run([&] { return destination.resolveTarget(pid, AccessibilityTrustPrompt::silent); });
  }
  bool isCurrent(const FrozenPasteTarget& target) {
    return loop.run([&] { return destination.isCurrent(target); });
  }
  PasteKeystrokeResult sendPaste(const FrozenPasteTarget& target) {
    return loop.run([&] { return destination.sendPaste(target); });
  }

  /// Freezes the field as soon as its program is ready.
  FrozenPasteTarget await(const PasteRecorder& recorder, PasteField field) {
    Resolution resolution = std::unexpected(PasteTargetFreezeError::destinationUnavailable);
    const bool isReady = eventually([&] {
      resolution = resolve(recorder.pid());
      return resolution && (field == PasteField::terminal || !resolution->identity.element.empty());
    });
    EXPECT_TRUE(isReady) << nameOf(field);
    return resolution.value_or(FrozenPasteTarget{});
  }

  SystemMonotonicClock clock;
  BlockingLoop loop;
  X11InputFocus inputFocus;
  AtspiFocusedElement focusedElement;
  X11PasteKeystroke keystroke;
  AccessibilityPasteDestination destination{{inputFocus, focusedElement, keystroke, clock}};
};

}  // namespace quillo::test
