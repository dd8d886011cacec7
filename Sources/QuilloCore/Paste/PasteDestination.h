#pragma once

#include <cstdint>
#include <expected>
#include <optional>

#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Paste/FrozenPasteTarget.h"

namespace quillo {

enum class PasteKeystrokeResult : std::uint8_t {
  sent,
  destinationChanged,  ///< the focus was no longer the destination's, so no key was pressed
  failed,              ///< no key was pressed, for any other reason
};

/// Where one pastes: whatever has the keyboard's focus. Every question is answered within a second, also when the
/// application in front does not answer at all. Nothing is thrown but OperationCancelled.
class PasteDestination {
 public:
  virtual ~PasteDestination() = default;

  /// Whether the desktop lets us read the focus and press keys.
  virtual Task<bool> isPermitted(AccessibilityTrustPrompt prompt) = 0;

  /// The process that has the focus; nothing when there is none.
  virtual Task<std::optional<std::int32_t>> frontmostProcessIdentifier() = 0;

  /// Freezes what has the focus now, which must be in that process.
  virtual Task<std::expected<FrozenPasteTarget, PasteTargetFreezeError>> resolveTarget(
      std::int32_t processIdentifier, AccessibilityTrustPrompt prompt) = 0;

  /// Whether the focus is still where it was.
  virtual Task<bool> isCurrent(FrozenPasteTarget target) = 0;

  /// Presses and releases the paste keys, if the focus is still where it was at that very moment. No key stays down.
  virtual Task<PasteKeystrokeResult> sendPaste(FrozenPasteTarget target) = 0;
};

}  // namespace quillo
