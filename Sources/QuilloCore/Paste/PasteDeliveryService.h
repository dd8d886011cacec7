#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>

#include "QuilloCore/Clipboard/ClipboardPayload.h"
#include "QuilloCore/Clipboard/PasteboardSession.h"
#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Concurrency/TaskExecutor.h"
#include "QuilloCore/Paste/FrozenPasteTarget.h"
#include "QuilloCore/Paste/ModifierReleaseSleeping.h"
#include "QuilloCore/Paste/PasteDeliveryExclusion.h"
#include "QuilloCore/Paste/PasteDeliveryResult.h"
#include "QuilloCore/Paste/PasteDestination.h"
#include "QuilloCore/Paste/PhysicalModifierFlagsProviding.h"

namespace quillo {

class PasteDelivery;

/// Puts a capture where the user types: waits until the shortcut's keys are released, saves the clipboard, writes the
/// screenshot and presses the paste keys, writes the text and presses them again, and gives the clipboard back. The
/// clipboard is never written over what somebody else has put there meanwhile, and no key goes anywhere but to the
/// frozen destination. Every failure is a result.
///
/// Used on its executor only, and outlives its deliveries. A cancelled delivery stops before its next step, gives the
/// clipboard back if it still holds ours, and only then throws OperationCancelled.
class PasteDeliveryService {
 public:
  /// All in seconds.
  struct Configuration {
    double modifierReleasePollInterval = 0.01;
    double modifierReleaseTimeout = 0.75;
    double clipboardReadinessDelay = 0.18;  ///< between writing and pasting
    double imageIngestionDelay = 0.9;       ///< for the destination to read the screenshot
    double finalIngestionDelay = 0.55;      ///< for the destination to read the text

    /// Without any pause.
    static const Configuration immediate;

    friend bool operator==(const Configuration&, const Configuration&) = default;
  };

  struct Collaborators {
    PasteboardSession& pasteboard;
    PasteDestination& destination;
    PhysicalModifierFlagsProviding& modifiers;
    ModifierReleaseSleeping& modifierReleaseSleeping;
    MonotonicClock& clock;
    PasteDeliveryExclusion* exclusion = nullptr;  ///< nothing where no other process can deliver
  };

  PasteDeliveryService(const Collaborators& collaborators, TaskExecutor executor, const Configuration& configuration);
  PasteDeliveryService(const PasteDeliveryService&) = delete;
  PasteDeliveryService& operator=(const PasteDeliveryService&) = delete;
  ~PasteDeliveryService() = default;

  /// Whether a delivery runs here; a second one is rejected, and so is one while another process delivers.
  bool isDelivering() const { return isDelivering_; }

  Task<PasteDeliveryResult> deliver(ClipboardPayload payload, FrozenPasteTarget target,
                                    AccessibilityTrustPrompt prompt);

  /// Freezes what has the focus in that process first.
  Task<PasteDeliveryResult> deliver(ClipboardPayload payload, std::int32_t processIdentifier,
                                    AccessibilityTrustPrompt prompt);

  /// For callers that do not wait: `completion` is called on the executor, unless the delivery is cancelled.
  TaskHandle deliver(ClipboardPayload payload, const FrozenPasteTarget& target, AccessibilityTrustPrompt prompt,
                     std::move_only_function<void(PasteDeliveryResult)> completion);

  Task<std::optional<FrozenPasteTarget>> freezeTarget(std::int32_t processIdentifier);
  Task<std::expected<FrozenPasteTarget, PasteTargetFreezeError>> resolveTarget(std::int32_t processIdentifier,
                                                                               AccessibilityTrustPrompt prompt);

  /// To be asked as soon as the paste is: the process that has the focus.
  Task<std::optional<std::int32_t>> captureFrontmostDestinationProcessIdentifier();

 private:
  Task<PasteDeliveryResult> runDelivery(std::shared_ptr<PasteDelivery> delivery);

  Collaborators collaborators_;
  TaskExecutor executor_;
  Configuration configuration_;
  bool isDelivering_ = false;
};

}  // namespace quillo
