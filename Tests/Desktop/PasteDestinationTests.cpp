// The destination on a real desktop: which field has the focus, and the keys that paste into it and nowhere else.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <string>

#include "PasteRecorder.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/SystemMonotonicClock.h"
#include "QuilloCore/Paste/AccessibilityPasteDestination.h"
#include "QuilloLinux/Accessibility/AtspiFocusedElement.h"
#include "QuilloLinux/Keyboard/X11InputFocus.h"
#include "QuilloLinux/Keyboard/X11PasteKeystroke.h"
#include "QuilloLinux/Keyboard/X11PhysicalModifiers.h"
#include "RunningProgram.h"
#include "TestWindow.h"

namespace quillo::test {
namespace {

using testing::HasSubstr;

using Resolution = std::expected<FrozenPasteTarget, PasteTargetFreezeError>;

/// The destination as the commands put it together.
struct Destination {
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

void setClipboard(const std::string& text) {
  runProgram({"xclip", "-selection", "clipboard", "-in", "-loops", "0"}, text);
}

class EveryField : public testing::TestWithParam<PasteField> {};

TEST_P(EveryField, isFrozenAndGetsWhatIsPasted) {
  const PasteField field = GetParam();
  const PasteRecorder recorder(field);
  Destination desktop;
  const FrozenPasteTarget target = desktop.await(recorder, field);
  EXPECT_EQ(target.keystroke, field == PasteField::terminal ? PasteKeystroke::controlShiftV : PasteKeystroke::controlV);
  EXPECT_TRUE(desktop.isCurrent(target));
  setClipboard("caf\u00E9 \U0001F600");
  EXPECT_EQ(desktop.sendPaste(target), PasteKeystrokeResult::sent);
  if (field == PasteField::terminal) {
    eventually([&] { return recorder.recorded().ends_with("\U0001F600"); });
    EXPECT_EQ(recorder.recorded(), "caf\u00E9 \U0001F600");
  } else {
    EXPECT_THAT(recorder.awaitLine("text \"caf\u00E9 \U0001F600\""), HasSubstr("text"));
  }
  EXPECT_EQ(X11PhysicalModifiers().physicalModifierFlags(), PhysicalModifierFlags());
}

INSTANTIATE_TEST_SUITE_P(PasteDestination, EveryField,
                         testing::Values(PasteField::gtk3Editor, PasteField::gtk4Entry, PasteField::qtEditor,
                                         PasteField::chromiumTextarea, PasteField::chromiumEditable,
                                         PasteField::terminal));

}  // namespace
}  // namespace quillo::test
