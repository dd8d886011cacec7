#include "QuilloCore/Paste/AccessibilityPasteDestination.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/SystemMonotonicClock.h"
#include "Tests/Support/Gate.h"
#include "Tests/Support/VirtualMonotonicClock.h"

namespace quillo::test {
namespace {

/// A desktop on which one field has the focus.
struct FakeDesktop : InputFocusProviding, FocusedElementProviding, PasteKeystrokeSending {
  std::optional<InputFocus> inputFocus() override {
    if (beforeInputFocus) beforeInputFocus();
    return focus;
  }

  bool isAllowed(AccessibilityTrustPrompt /*prompt*/) override { return isElementAllowed; }
  std::expected<FocusedElement, FocusedElementAbsence> focusedElement(std::int32_t /*processIdentifier*/,
                                                                      double messagingTimeout) override {
    timeouts.push_back(messagingTimeout);
    if (whileSearching) whileSearching();
    return element;
  }
  bool isFocused(const std::string& identity, double messagingTimeout) override {
    timeouts.push_back(messagingTimeout);
    return element && element->identity == identity;
  }

  bool isAllowed() override { return isKeystrokeAllowed; }
  PasteKeystrokeOutcome send(PasteKeystroke keystroke, std::uint32_t inputFocus) override {
    if (inputFocus != focus->window) return PasteKeystrokeOutcome::focusMoved;
    if (heldCount-- > 0) return PasteKeystrokeOutcome::keysHeld;
    if (keystrokeOutcome == PasteKeystrokeOutcome::sent) sent.push_back(keystroke);
    return keystrokeOutcome;
  }

  std::optional<InputFocus> focus = InputFocus{.window = 5, .processIdentifier = 42};
  std::expected<FocusedElement, FocusedElementAbsence> element = FocusedElement{.identity = "field"};
  bool isElementAllowed = true;
  bool isKeystrokeAllowed = true;
  PasteKeystrokeOutcome keystrokeOutcome = PasteKeystrokeOutcome::sent;
  int heldCount = 0;
  std::function<void()> beforeInputFocus;
  std::function<void()> whileSearching;
  std::vector<PasteKeystroke> sent;
  std::vector<double> timeouts;
};

struct PasteDestinationTest : testing::Test {
  std::expected<FrozenPasteTarget, PasteTargetFreezeError> resolve(std::int32_t pid = 42) {
    return loop.run([&] { return destination.resolveTarget(pid, AccessibilityTrustPrompt::silent); });
  }
  bool isCurrent(const FrozenPasteTarget& target) {
    return loop.run([&] { return destination.isCurrent(target); });
  }
  PasteKeystrokeResult sendPaste(const FrozenPasteTarget& target) {
    return loop.run([&] { return destination.sendPaste(target); });
  }

  SystemMonotonicClock clock;
  BlockingLoop loop;
  FakeDesktop desktop;
  AccessibilityPasteDestination destination{{desktop, desktop, desktop, clock}};
};

TEST_F(PasteDestinationTest, freezesElementAndWindowOrTheWindowAlone) {
  const auto withElement = resolve();
  ASSERT_TRUE(withElement);
  EXPECT_EQ(*withElement, (FrozenPasteTarget{42, {5, "field"}, PasteKeystroke::controlV}));
  EXPECT_EQ(desktop.timeouts, (std::vector<double>{0.4F}));

  desktop.element = std::unexpected(FocusedElementAbsence::notExposed);
  desktop.focus->isTerminal = true;
  const auto withoutElement = resolve();
  ASSERT_TRUE(withoutElement);
  EXPECT_EQ(*withoutElement, (FrozenPasteTarget{42, {5, ""}, PasteKeystroke::controlShiftV}));

  desktop.element = FocusedElement{.identity = "screen", .isTerminal = true};
  desktop.focus->isTerminal = false;
  EXPECT_EQ(resolve()->keystroke, PasteKeystroke::controlShiftV);
}

TEST_F(PasteDestinationTest, saysWhyNothingCanBeFrozen) {
  using Error = PasteTargetFreezeError;
  EXPECT_EQ(resolve(43), std::unexpected(Error::destinationChanged));

  desktop.whileSearching = [&] { desktop.focus->window = 6; };
  EXPECT_EQ(resolve(), std::unexpected(Error::destinationChanged)) << "the focus moved during the search";
  desktop.whileSearching = nullptr;

  desktop.element = std::unexpected(FocusedElementAbsence::noAnswer);
  EXPECT_EQ(resolve(), std::unexpected(Error::destinationUnavailable));

  desktop.isElementAllowed = false;
  EXPECT_EQ(resolve(), std::unexpected(Error::accessibilityPermissionRequired));
  desktop.isElementAllowed = true;
  desktop.isKeystrokeAllowed = false;
  EXPECT_EQ(resolve(), std::unexpected(Error::accessibilityPermissionRequired));

  desktop.focus.reset();
  EXPECT_EQ(resolve(), std::unexpected(Error::destinationUnavailable)) << "nothing has the focus";
}

TEST_F(PasteDestinationTest, isCurrentOnlyWhileWindowProcessAndElementAreTheSame) {
  const FrozenPasteTarget target = resolve().value();
  EXPECT_TRUE(isCurrent(target));
  EXPECT_EQ(sendPaste(target), PasteKeystrokeResult::sent);

  desktop.element = FocusedElement{.identity = "another field"};
  EXPECT_FALSE(isCurrent(target));
  desktop.element = std::unexpected(FocusedElementAbsence::noAnswer);
  EXPECT_FALSE(isCurrent(target));
  desktop.element = FocusedElement{.identity = "field"};
  desktop.focus->processIdentifier = 43;
  EXPECT_FALSE(isCurrent(target));
  desktop.focus = InputFocus{.window = 6, .processIdentifier = 42};
  EXPECT_FALSE(isCurrent(target));
  EXPECT_EQ(sendPaste(target), PasteKeystrokeResult::destinationChanged);
  EXPECT_EQ(desktop.sent.size(), 1U);
}

TEST_F(PasteDestinationTest, keystrokeWaitsForFingersButNotForEver) {
  const FrozenPasteTarget target = resolve().value();
  desktop.heldCount = 3;
  EXPECT_EQ(sendPaste(target), PasteKeystrokeResult::sent);
  desktop.heldCount = 1'000'000;
  EXPECT_EQ(sendPaste(target), PasteKeystrokeResult::failed);
  desktop.heldCount = 0;
  desktop.keystrokeOutcome = PasteKeystrokeOutcome::failed;
  EXPECT_EQ(sendPaste(target), PasteKeystrokeResult::failed);
  EXPECT_EQ(desktop.sent.size(), 1U);
}

TEST(PasteDestinationDeadline, aDesktopThatHangsReleasesItsCaller) {
  Gate gate;
  VirtualMonotonicClock clock;
  BlockingLoop loop;
  FakeDesktop desktop;
  desktop.beforeInputFocus = [&] {
    clock.advance(2);
    gate.pass();
  };
  AccessibilityPasteDestination destination({desktop, desktop, desktop, clock});
  const auto resolved = loop.run([&] { return destination.resolveTarget(42, AccessibilityTrustPrompt::silent); });
  EXPECT_EQ(resolved, std::unexpected(PasteTargetFreezeError::destinationUnavailable));
  gate.open();
}

}  // namespace
}  // namespace quillo::test
