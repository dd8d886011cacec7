#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <variant>

#include "QuilloCore/Clipboard/ClipboardPayload.h"
#include "QuilloCore/Clipboard/PasteboardSnapshot.h"
#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Paste/FrozenPasteTarget.h"
#include "QuilloCore/Paste/PasteDeliveryResult.h"
#include "QuilloCore/Paste/PasteDeliveryService.h"

namespace quillo {

/// One run of the PasteDeliveryService, begun once. It cannot be torn off in the middle of a step: what it has written
/// it gives back, also when it is cancelled.
class PasteDelivery {
 public:
  /// A frozen target, or the process to freeze one in.
  using Destination = std::variant<FrozenPasteTarget, std::int32_t>;

  PasteDelivery(const PasteDeliveryService::Collaborators& collaborators,
                const PasteDeliveryService::Configuration& configuration, ClipboardPayload payload,
                Destination destination, AccessibilityTrustPrompt prompt);

  Task<PasteDeliveryResult> run();

  /// The run ends before its next step, with OperationCancelled. From any thread.
  void cancel() { cancellation_->resolve({}); }

 private:
  using Stop = std::optional<PasteDeliveryResult>;  // nothing: go on

  Task<PasteDeliveryResult> perform();
  Task<Stop> freezeDestination();
  Task<bool> waitForReleasedModifiers();
  Task<Stop> saveClipboard();
  Task<Stop> beginTextStage();
  Task<Stop> pasteStage(PasteDeliveryStage stage);
  Task<Stop> writeStage(PasteDeliveryStage stage);
  Task<bool> isClipboardOurs();
  Task<PasteDeliveryResult> restoreAndStop(PasteDeliveryOutcome outcome);
  Task<PasteClipboardRestoration> restore();
  Task<> pause(double seconds);
  void checkCancellation() const;

  PasteDeliveryService::Collaborators collaborators_;
  PasteDeliveryService::Configuration configuration_;
  ClipboardPayload payload_;
  Destination destination_;
  AccessibilityTrustPrompt prompt_;
  std::shared_ptr<PendingResult<void>> cancellation_ = std::make_shared<PendingResult<void>>();

  FrozenPasteTarget target_;
  PasteboardSnapshot snapshot_;
  std::uint64_t changeCount_ = 0;  // what the last step left
  bool isOurs_ = false;            // whether that step was ours: then the clipboard is given back
};

}  // namespace quillo
