#pragma once

#include <concepts>
#include <cstdint>
#include <expected>
#include <functional>
#include <optional>

#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Paste/FocusedElementProviding.h"
#include "QuilloCore/Paste/InputFocusProviding.h"
#include "QuilloCore/Paste/PasteDestination.h"
#include "QuilloCore/Paste/PasteKeystrokeSending.h"

namespace quillo {

/// The destination as display and applications describe it: the window that has the keyboard's focus and, where its
/// application names one, the focused element inside. Everything is asked on a queue of its own, so that nobody waits
/// for an application that does not answer.
class AccessibilityPasteDestination final : public PasteDestination {
 public:
  struct Providers {
    InputFocusProviding& inputFocus;
    FocusedElementProviding& focusedElement;
    PasteKeystrokeSending& keystroke;
    MonotonicClock& clock;
  };

  /// The time that an application has for an answer, in seconds.
  static constexpr float defaultMessagingTimeout = 0.4F;

  explicit AccessibilityPasteDestination(const Providers& providers, float messagingTimeout = defaultMessagingTimeout)
      : providers_(providers), messagingTimeout_(messagingTimeout) {}

  Task<bool> isPermitted(AccessibilityTrustPrompt prompt) override;
  Task<std::optional<std::int32_t>> frontmostProcessIdentifier() override;
  Task<std::expected<FrozenPasteTarget, PasteTargetFreezeError>> resolveTarget(
      std::int32_t processIdentifier, AccessibilityTrustPrompt prompt) override;
  Task<bool> isCurrent(FrozenPasteTarget target) override;
  Task<PasteKeystrokeResult> sendPaste(FrozenPasteTarget target) override;

 private:
  using Resolution = std::expected<FrozenPasteTarget, PasteTargetFreezeError>;

  bool isAllowed(AccessibilityTrustPrompt prompt);
  Resolution resolve(std::int32_t processIdentifier, AccessibilityTrustPrompt prompt);
  bool hasFocus(const FrozenPasteTarget& target);

  Providers providers_;
  double messagingTimeout_;
  SerialQueue queue_{"org.quillo.Quillo.paste-destination"};
};

}  // namespace quillo
