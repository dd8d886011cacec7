#pragma once

#include <cstdint>

namespace quillo {

/// A delivery pastes twice: the screenshot, then the text.
enum class PasteDeliveryStage : std::uint8_t { image, text };

enum class PasteTextDeliveryMethod : std::uint8_t { nativePaste };

/// What a delivery came to.
struct PasteDeliveryOutcome {
  enum class Kind : std::uint8_t {
    clipboardOwnershipLost,           ///< somebody else wrote to the clipboard before that stage's next step
    clipboardWriteFailed,             ///< the clipboard refused that stage
    nativePasteFailed,                ///< the keystroke of that stage could not be sent
    delivered,                        ///< both stages were pasted
    rejectedBusy,                     ///< another delivery is running
    accessibilityPermissionRequired,  ///< the destination may not be read, or keys not be sent
    destinationUnavailable,           ///< there is no such destination, or no longer
    destinationChanged,               ///< focus moved away from it
    shortcutReleaseTimedOut,          ///< modifier keys were still held
    clipboardSnapshotIncomplete,      ///< the clipboard could not be saved whole, so nothing was written
  };
  Kind kind = Kind::destinationUnavailable;
  PasteDeliveryStage stage = PasteDeliveryStage::image;  ///< of the first three kinds; else `image`
  PasteTextDeliveryMethod textMethod = PasteTextDeliveryMethod::nativePaste;

  friend bool operator==(const PasteDeliveryOutcome&, const PasteDeliveryOutcome&) = default;
};

/// What became of the user's clipboard.
enum class PasteClipboardRestoration : std::uint8_t {
  notNeeded,                       ///< nothing was written
  restored,                        ///< it holds what it held before
  skippedBecauseClipboardChanged,  ///< somebody has written since, and keeps it
  failed,                          ///< it is lost
};

struct PasteDeliveryResult {
  PasteDeliveryOutcome outcome;
  PasteClipboardRestoration clipboardRestoration = PasteClipboardRestoration::notNeeded;

  friend bool operator==(const PasteDeliveryResult&, const PasteDeliveryResult&) = default;
};

}  // namespace quillo
