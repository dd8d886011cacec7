#include "QuilloCore/Paste/PasteDeliveryService.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "PasteScript.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"

namespace quillo::test {
namespace {

using testing::EndsWith;
using testing::StartsWith;

/// In the words of the enumerations: "clipboardOwnershipLost(image), restored".
std::string textOf(const PasteDeliveryResult& result) {
  constexpr std::array<std::string_view, 10> kinds = {"clipboardOwnershipLost",
                                                      "clipboardWriteFailed",
                                                      "nativePasteFailed",
                                                      "delivered",
                                                      "rejectedBusy",
                                                      "accessibilityPermissionRequired",
                                                      "destinationUnavailable",
                                                      "destinationChanged",
                                                      "shortcutReleaseTimedOut",
                                                      "clipboardSnapshotIncomplete"};
  constexpr std::array<std::string_view, 4> restorations = {"notNeeded", "restored", "skippedBecauseClipboardChanged",
                                                            "failed"};
  const bool hasStage = result.outcome.kind <= PasteDeliveryOutcome::Kind::nativePasteFailed;
  const char* stage = result.outcome.stage == PasteDeliveryStage::image ? "(image)" : "(text)";
  return fmt::format("{}{}, {}", kinds.at(static_cast<std::size_t>(result.outcome.kind)), hasStage ? stage : "",
                     restorations.at(static_cast<std::size_t>(result.clipboardRestoration)));
}

/// A delivery among fakes.
struct Delivery {
  explicit Delivery(const PasteDeliveryService::Configuration& configuration = {},
                    PasteDeliveryExclusion* exclusion = nullptr)
      : service({pasteboard, destination, modifiers, modifiers, clock, exclusion}, loop.executor(), configuration) {}

  std::string run() {
    try {
      return textOf(
          loop.run([this] { return service.deliver({}, FrozenPasteTarget{}, AccessibilityTrustPrompt::silent); }));
    } catch (const OperationCancelled&) {
      return "cancelled";
    }
  }

  PasteScript script;
  BlockingLoop loop;
  ScriptClock clock{script, loop.executor()};
  ScriptPasteboard pasteboard{script};
  ScriptDestination destination{script};
  ScriptModifiers modifiers{script, clock};
  PasteDeliveryService service;
};

const std::string imageStage = "focus?, snapshot, write image-only, pause 0.18, focus?, paste, pause 0.9";
const std::string textStage = "focus?, write text-only, pause 0.18, focus?, paste, pause 0.55";

TEST(PasteDelivery, pastesImageThenTextAndGivesTheClipboardBack) {
  Delivery delivery;
  EXPECT_EQ(delivery.run(), "delivered, restored");
  EXPECT_EQ(delivery.script.text(), imageStage + ", " + textStage + ", restore");
  EXPECT_EQ(delivery.pasteboard.restored, delivery.pasteboard.saved);

  Delivery immediate(PasteDeliveryService::Configuration::immediate);
  EXPECT_EQ(immediate.run(), "delivered, restored");
  EXPECT_EQ(immediate.script.text(),
            "focus?, snapshot, write image-only, focus?, paste, focus?, write text-only, focus?, paste, restore");
}

// What may happen, when, and what the delivery then does: nothing more than it must to leave the clipboard as it was.
TEST(PasteDelivery, stopsAtEachStepWhenSomethingHappens) {
  using Effect = std::function<void(Delivery&)>;
  const Effect otherWrites = [](Delivery& delivery) { delivery.pasteboard.changeByOther(); };
  const Effect focusMoves = [](Delivery& delivery) { delivery.destination.hasFocus = false; };
  const Effect writesAreRejected = [](Delivery& delivery) { delivery.pasteboard.rejectsWrites = true; };
  const Effect writesAreRejectedAndCountUnknown = [](Delivery& delivery) {
    delivery.pasteboard.rejectsWrites = true;
    delivery.pasteboard.tellsCountOfRejection = false;
  };
  const Effect keysFail = [](Delivery& delivery) { delivery.destination.keystroke = PasteKeystrokeResult::failed; };
  const Effect focusMovesUnderTheKeys = [](Delivery& delivery) {
    delivery.destination.keystroke = PasteKeystrokeResult::destinationChanged;
  };
  const Effect typeCannotBeRead = [](Delivery& delivery) {
    delivery.pasteboard.saved.items[0].representations.clear();
  };
  const Effect restoringFails = [](Delivery& delivery) { delivery.pasteboard.failsToRestore = true; };
  const Effect restoringAndKeysFail = [](Delivery& delivery) {
    delivery.pasteboard.failsToRestore = true;
    delivery.destination.keystroke = PasteKeystrokeResult::failed;
  };
  const Effect cancelled = [](Delivery& delivery) { delivery.loop.cancel(); };

  const std::string lostImage = "clipboardOwnershipLost(image), skippedBecauseClipboardChanged";
  const std::string lostText = "clipboardOwnershipLost(text), skippedBecauseClipboardChanged";
  struct Case {
    const char* when;
    Effect what;
    std::string result;
    std::string script;  // the last thing that is done
  };
  const std::vector<Case> cases = {
      {"focus?", focusMoves, "destinationChanged, notNeeded", "focus?"},
      {"snapshot", typeCannotBeRead, "clipboardSnapshotIncomplete, notNeeded", "focus?, snapshot"},
      {"snapshot", otherWrites, lostImage, "focus?, snapshot"},
      {"write image-only", otherWrites, lostImage, "snapshot, write image-only"},
      {"write image-only", writesAreRejected, "clipboardWriteFailed(image), restored",
       "snapshot, write image-only, restore"},
      {"write image-only", writesAreRejectedAndCountUnknown, "clipboardWriteFailed(image), notNeeded",
       "snapshot, write image-only"},
      {"pause 0.18", otherWrites, lostImage, "write image-only, pause 0.18"},
      {"pause 0.18", focusMoves, "destinationChanged, restored", "pause 0.18, focus?, restore"},
      {"pause 0.18", cancelled, "cancelled", "pause 0.18, restore"},
      {"focus?#2", keysFail, "nativePasteFailed(image), restored", "pause 0.18, focus?, paste, restore"},
      {"focus?#2", focusMovesUnderTheKeys, "destinationChanged, restored", "pause 0.18, focus?, paste, restore"},
      {"focus?#2", restoringAndKeysFail, "nativePasteFailed(image), failed", "paste, restore"},
      {"pause 0.9", otherWrites, lostText, imageStage},
      {"pause 0.9", focusMoves, "destinationChanged, restored", "pause 0.9, focus?, restore"},
      {"pause 0.9", cancelled, "cancelled", "pause 0.9, restore"},
      {"write text-only", otherWrites, lostText, "pause 0.9, focus?, write text-only"},
      {"write text-only", writesAreRejected, "clipboardWriteFailed(text), restored", "write text-only, restore"},
      {"write text-only", writesAreRejectedAndCountUnknown,
       "clipboardWriteFailed(text), skippedBecauseClipboardChanged", "write text-only, restore"},
      {"pause 0.18#2", otherWrites, lostText, "write text-only, pause 0.18"},
      {"pause 0.18#2", focusMoves, "destinationChanged, restored", "pause 0.18, focus?, restore"},
      {"focus?#4", keysFail, "nativePasteFailed(text), restored", "focus?, paste, restore"},
      {"pause 0.55", otherWrites, "delivered, skippedBecauseClipboardChanged", textStage + ", restore"},
      {"pause 0.55", focusMoves, "delivered, restored", textStage + ", restore"},
      {"pause 0.55", restoringFails, "delivered, failed", textStage + ", restore"},
      {"pause 0.55", cancelled, "cancelled", "pause 0.55, restore"},
  };
  for (const Case& each : cases) {
    Delivery delivery;
    delivery.script.on(each.when, [&] { each.what(delivery); });
    const std::string result = delivery.run();
    SCOPED_TRACE(fmt::format("at \"{}\": {}", each.when, delivery.script.text()));
    EXPECT_EQ(result, each.result);
    EXPECT_THAT(delivery.script.text(), EndsWith(each.script));
    EXPECT_FALSE(delivery.service.isDelivering());
    // Whoever has written since keeps the clipboard.
    const bool isRestored = result.ends_with("restored") || result == "cancelled";
    EXPECT_EQ(delivery.pasteboard.restored, isRestored ? delivery.pasteboard.saved : PasteboardSnapshot());
  }
}

TEST(PasteDelivery, waitsUntilEveryModifierIsReleased) {
  for (const PhysicalModifierFlags held : {PhysicalModifierFlags{.shift = true},
                                           {.control = true},
                                           {.option = true},
                                           {.command = true},
                                           {.secondaryFunction = true}}) {
    Delivery delivery;
    delivery.modifiers.held = held;
    delivery.modifiers.heldReadings = 2;
    EXPECT_EQ(delivery.run(), "delivered, restored");
    EXPECT_THAT(delivery.script.text(), StartsWith("sleep 0.01, sleep 0.01, focus?, snapshot"));
  }
}

TEST(PasteDelivery, givesUpWhenTheKeysStayDownAndNeverSleepsPastTheTimeOut) {
  Delivery delivery({.modifierReleasePollInterval = 0.3, .modifierReleaseTimeout = 0.75});
  delivery.modifiers.held.command = true;
  delivery.modifiers.heldReadings = 1000;
  EXPECT_EQ(delivery.run(), "shortcutReleaseTimedOut, notNeeded");
  EXPECT_EQ(delivery.script.text(), "sleep 0.3, sleep 0.3, sleep 0.15");

  Delivery immediate(PasteDeliveryService::Configuration::immediate);
  immediate.modifiers.held.command = true;
  immediate.modifiers.heldReadings = 1000;
  EXPECT_EQ(immediate.run(), "shortcutReleaseTimedOut, notNeeded");
  EXPECT_EQ(immediate.script.text(), "");

  Delivery cancelled;
  cancelled.modifiers.held.command = true;
  cancelled.modifiers.heldReadings = 1000;
  cancelled.script.on("sleep 0.01#3", [&] { cancelled.loop.cancel(); });
  EXPECT_EQ(cancelled.run(), "cancelled");
  EXPECT_THAT(cancelled.script.text(), EndsWith("sleep 0.01"));
  EXPECT_FALSE(cancelled.service.isDelivering());
}

TEST(PasteDelivery, secondDeliveryIsRejectedAndTouchesNothing) {
  Delivery delivery;
  std::string second;
  TaskHandle started;
  delivery.script.on("pause 0.9", [&] {
    EXPECT_TRUE(delivery.service.isDelivering());
    started = delivery.service.deliver({}, FrozenPasteTarget{}, AccessibilityTrustPrompt::silent,
                                       [&](const PasteDeliveryResult& result) { second = textOf(result); });
  });
  EXPECT_EQ(delivery.run(), "delivered, restored");
  EXPECT_EQ(second, "rejectedBusy, notNeeded");
  EXPECT_EQ(delivery.script.text(), imageStage + ", " + textStage + ", restore");
  // The next one is welcome.
  EXPECT_EQ(delivery.run(), "delivered, restored");
}

TEST(PasteDelivery, anotherProcessThatDeliversIsNotDisturbed) {
  struct Exclusion final : PasteDeliveryExclusion {
    bool enter() override { return !isTaken && ++entered > 0; }
    void leave() override { --entered; }
    bool isTaken = false;
    int entered = 0;
  };
  Exclusion exclusion;
  Delivery delivery({}, &exclusion);
  delivery.script.on("pause 0.9", [&] { EXPECT_EQ(exclusion.entered, 1); });
  EXPECT_EQ(delivery.run(), "delivered, restored");
  EXPECT_EQ(exclusion.entered, 0);
  exclusion.isTaken = true;
  EXPECT_EQ(delivery.run(), "rejectedBusy, notNeeded");
  EXPECT_EQ(delivery.script.text(), imageStage + ", " + textStage + ", restore");

  Delivery cancelled({}, &exclusion);
  exclusion.isTaken = false;
  cancelled.script.on("pause 0.9", [&] { cancelled.loop.cancel(); });
  EXPECT_EQ(cancelled.run(), "cancelled");
  EXPECT_EQ(exclusion.entered, 0);
}

TEST(PasteDelivery, freezesTheProcessOrSaysWhyItCannot) {
  const auto run = [](Delivery& delivery) {
    return textOf(
        delivery.loop.run([&] { return delivery.service.deliver({}, 42, AccessibilityTrustPrompt::askUser); }));
  };
  Delivery delivery;
  EXPECT_EQ(run(delivery), "delivered, restored");
  EXPECT_THAT(delivery.script.text(), StartsWith("freeze 42, focus?, snapshot"));

  const std::vector<std::pair<PasteTargetFreezeError, std::string>> errors = {
      {PasteTargetFreezeError::accessibilityPermissionRequired, "accessibilityPermissionRequired, notNeeded"},
      {PasteTargetFreezeError::destinationUnavailable, "destinationUnavailable, notNeeded"},
      {PasteTargetFreezeError::destinationChanged, "destinationChanged, notNeeded"}};
  for (const auto& [error, result] : errors) {
    Delivery refused;
    refused.destination.resolution = std::unexpected(error);
    EXPECT_EQ(run(refused), result);
    EXPECT_EQ(refused.script.text(), "freeze 42");
  }

  Delivery forbidden;
  forbidden.destination.isAllowed = false;
  EXPECT_EQ(forbidden.run(), "accessibilityPermissionRequired, notNeeded");
  EXPECT_EQ(forbidden.script.text(), "");
}

}  // namespace
}  // namespace quillo::test
