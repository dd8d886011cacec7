#include "QuilloCore/Paste/PasteDelivery.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "QuilloCore/Clipboard/ClipboardComposition.h"
#include "QuilloCore/Clipboard/PasteboardSession.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"

namespace quillo {
namespace {

using Kind = PasteDeliveryOutcome::Kind;

PasteDeliveryResult stopWithNothingWritten(Kind kind) {
  return {{.kind = kind}, PasteClipboardRestoration::notNeeded};
}

PasteDeliveryResult stopForOtherOwner(PasteDeliveryStage stage) {
  return {{Kind::clipboardOwnershipLost, stage}, PasteClipboardRestoration::skippedBecauseClipboardChanged};
}

Kind kindOf(PasteTargetFreezeError error) {
  switch (error) {
    case PasteTargetFreezeError::accessibilityPermissionRequired: return Kind::accessibilityPermissionRequired;
    case PasteTargetFreezeError::destinationUnavailable: return Kind::destinationUnavailable;
    case PasteTargetFreezeError::destinationChanged: return Kind::destinationChanged;
  }
  return Kind::destinationUnavailable;
}

}  // namespace

PasteDelivery::PasteDelivery(const PasteDeliveryService::Collaborators& collaborators,
                             const PasteDeliveryService::Configuration& configuration, ClipboardPayload payload,
                             Destination destination, AccessibilityTrustPrompt prompt)
    : collaborators_(collaborators),
      configuration_(configuration),
      payload_(std::move(payload)),
      destination_(std::move(destination)),
      prompt_(prompt) {}

Task<PasteDeliveryResult> PasteDelivery::run() {
  Task<Outcome<PasteDeliveryResult>> performing = outcomeOf(perform());
  Outcome<PasteDeliveryResult> outcome = co_await std::move(performing);
  if (!outcome) {
    Task<PasteClipboardRestoration> restoring = restore();
    co_await std::move(restoring);
    std::rethrow_exception(outcome.error());
  }
  co_return *outcome;
}

Task<PasteDeliveryResult> PasteDelivery::perform() {
  checkCancellation();
  Task<Stop> freezing = freezeDestination();
  if (Stop stop = co_await std::move(freezing)) co_return *stop;

  Task<bool> releasing = waitForReleasedModifiers();
  if (!co_await std::move(releasing)) co_return stopWithNothingWritten(Kind::shortcutReleaseTimedOut);

  Task<bool> checking = collaborators_.destination.isCurrent(target_);
  if (!co_await std::move(checking)) co_return stopWithNothingWritten(Kind::destinationChanged);

  Task<Stop> saving = saveClipboard();
  if (Stop stop = co_await std::move(saving)) co_return *stop;

  Task<Stop> pastingImage = pasteStage(PasteDeliveryStage::image);
  if (Stop stop = co_await std::move(pastingImage)) co_return *stop;

  Task<Stop> beginningText = beginTextStage();
  if (Stop stop = co_await std::move(beginningText)) co_return *stop;

  Task<Stop> pastingText = pasteStage(PasteDeliveryStage::text);
  if (Stop stop = co_await std::move(pastingText)) co_return *stop;

  Task<PasteDeliveryResult> ending = restoreAndStop({.kind = Kind::delivered});
  co_return co_await std::move(ending);
}

Task<PasteDelivery::Stop> PasteDelivery::freezeDestination() {
  if (const auto* frozen = std::get_if<FrozenPasteTarget>(&destination_)) {
    target_ = *frozen;
    Task<bool> asking = collaborators_.destination.isPermitted(prompt_);
    if (co_await std::move(asking)) co_return std::nullopt;
    co_return stopWithNothingWritten(Kind::accessibilityPermissionRequired);
  }
  Task<std::expected<FrozenPasteTarget, PasteTargetFreezeError>> resolving =
      collaborators_.destination.resolveTarget(std::get<std::int32_t>(destination_), prompt_);
  auto resolved = co_await std::move(resolving);
  if (!resolved) co_return stopWithNothingWritten(kindOf(resolved.error()));
  target_ = std::move(*resolved);
  co_return std::nullopt;
}

Task<bool> PasteDelivery::waitForReleasedModifiers() {
  MonotonicClock& clock = collaborators_.clock;
  const std::uint64_t deadline = uptimeAfter(clock.uptimeNanoseconds(), configuration_.modifierReleaseTimeout);
  while (collaborators_.modifiers.physicalModifierFlags().isAnyHeld()) {
    const std::uint64_t now = clock.uptimeNanoseconds();
    if (now >= deadline) co_return false;
    const double timeLeft = static_cast<double>(deadline - now) / 1e9;
    Task<> sleeping =
        collaborators_.modifierReleaseSleeping.sleep(std::min(configuration_.modifierReleasePollInterval, timeLeft));
    co_await std::move(sleeping);
    checkCancellation();
  }
  co_return true;
}

Task<PasteDelivery::Stop> PasteDelivery::saveClipboard() {
  Task<std::uint64_t> counting = collaborators_.pasteboard.changeCount();
  changeCount_ = co_await std::move(counting);
  Task<PasteboardSnapshot> saving = collaborators_.pasteboard.captureSnapshot();
  snapshot_ = co_await std::move(saving);
  Task<std::uint64_t> countingAgain = collaborators_.pasteboard.changeCount();
  if (co_await std::move(countingAgain) != changeCount_) co_return stopForOtherOwner(PasteDeliveryStage::image);
  if (!snapshot_.isComplete()) co_return stopWithNothingWritten(Kind::clipboardSnapshotIncomplete);
  checkCancellation();
  co_return std::nullopt;
}

Task<PasteDelivery::Stop> PasteDelivery::beginTextStage() {
  Task<bool> owning = isClipboardOurs();
  if (!co_await std::move(owning)) co_return stopForOtherOwner(PasteDeliveryStage::text);
  Task<bool> checking = collaborators_.destination.isCurrent(target_);
  if (co_await std::move(checking)) co_return std::nullopt;
  Task<PasteDeliveryResult> stopping = restoreAndStop({.kind = Kind::destinationChanged});
  co_return co_await std::move(stopping);
}

Task<PasteDelivery::Stop> PasteDelivery::pasteStage(PasteDeliveryStage stage) {
  const bool isImage = stage == PasteDeliveryStage::image;
  Task<Stop> writing = writeStage(stage);
  if (Stop stop = co_await std::move(writing)) co_return *stop;
  Task<> settling = pause(configuration_.clipboardReadinessDelay);
  co_await std::move(settling);

  Task<bool> owning = isClipboardOurs();
  if (!co_await std::move(owning)) co_return stopForOtherOwner(stage);
  Task<bool> checking = collaborators_.destination.isCurrent(target_);
  PasteKeystrokeResult pasted = PasteKeystrokeResult::destinationChanged;
  if (co_await std::move(checking)) {
    Task<PasteKeystrokeResult> pasting = collaborators_.destination.sendPaste(target_);
    pasted = co_await std::move(pasting);
  }
  if (pasted != PasteKeystrokeResult::sent) {
    PasteDeliveryOutcome outcome = {Kind::nativePasteFailed, stage};
    if (pasted == PasteKeystrokeResult::destinationChanged) outcome = {.kind = Kind::destinationChanged};
    Task<PasteDeliveryResult> stopping = restoreAndStop(outcome);
    co_return co_await std::move(stopping);
  }
  Task<> ingesting = pause(isImage ? configuration_.imageIngestionDelay : configuration_.finalIngestionDelay);
  co_await std::move(ingesting);
  co_return std::nullopt;
}

Task<PasteDelivery::Stop> PasteDelivery::writeStage(PasteDeliveryStage stage) {
  const auto composition =
      stage == PasteDeliveryStage::image ? ClipboardComposition::imageOnly : ClipboardComposition::textOnly;
  Task<ClipboardConditionalWriteResult> writing = collaborators_.pasteboard.write(payload_, composition, changeCount_);
  const ClipboardConditionalWriteResult result = co_await std::move(writing);
  if (result.kind == ClipboardConditionalWriteResult::Kind::changed) co_return stopForOtherOwner(stage);
  // One that was refused has cleared the clipboard all the same. When the count after that is not known, the last one
  // of ours is tried, and rather skipped.
  if (result.changeCount) {
    changeCount_ = *result.changeCount;
    isOurs_ = true;
  }
  if (result.kind == ClipboardConditionalWriteResult::Kind::written) co_return std::nullopt;
  Task<PasteDeliveryResult> stopping = restoreAndStop({Kind::clipboardWriteFailed, stage});
  co_return co_await std::move(stopping);
}

Task<bool> PasteDelivery::isClipboardOurs() {
  Task<std::uint64_t> counting = collaborators_.pasteboard.changeCount();
  co_return co_await std::move(counting) == changeCount_;
}

Task<PasteDeliveryResult> PasteDelivery::restoreAndStop(PasteDeliveryOutcome outcome) {
  Task<PasteClipboardRestoration> restoring = restore();
  const PasteClipboardRestoration restoration = co_await std::move(restoring);
  co_return PasteDeliveryResult{outcome, restoration};
}

Task<PasteClipboardRestoration> PasteDelivery::restore() {
  if (!std::exchange(isOurs_, false)) co_return PasteClipboardRestoration::notNeeded;
  Task<PasteboardConditionalRestoreResult> restoring =
      collaborators_.pasteboard.restore(std::move(snapshot_), changeCount_);
  switch (co_await std::move(restoring)) {
    case PasteboardConditionalRestoreResult::restored: co_return PasteClipboardRestoration::restored;
    case PasteboardConditionalRestoreResult::skippedBecauseClipboardChanged:
      co_return PasteClipboardRestoration::skippedBecauseClipboardChanged;
    case PasteboardConditionalRestoreResult::failed: break;
  }
  co_return PasteClipboardRestoration::failed;
}

Task<> PasteDelivery::pause(double seconds) {
  checkCancellation();
  if (!(seconds > 0)) co_return;
  auto elapsed = std::make_shared<PendingResult<void>>();
  const auto resolve = [elapsed] { elapsed->resolve({}); };
  cancellation_->whenResolved(resolve);
  MonotonicClock& clock = collaborators_.clock;
  const Timer timer = clock.callAt(uptimeAfter(clock.uptimeNanoseconds(), seconds), resolve);
  Task<> waiting = waitFor(elapsed);
  co_await std::move(waiting);
  checkCancellation();
}

void PasteDelivery::checkCancellation() const {
  if (cancellation_->isResolved()) throw OperationCancelled();
}

}  // namespace quillo
