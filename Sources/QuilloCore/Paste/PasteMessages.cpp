#include "QuilloCore/Paste/PasteMessages.h"

namespace quillo {
namespace {

std::string_view messageOf(PasteDeliveryOutcome::Kind kind) {
  using enum PasteDeliveryOutcome::Kind;
  switch (kind) {
    case clipboardOwnershipLost: return PasteMessages::clipboardChanged;
    case clipboardWriteFailed: return PasteMessages::clipboardRejectedPart;
    case nativePasteFailed: return PasteMessages::keystrokeFailed;
    case delivered: return PasteMessages::delivered;
    case rejectedBusy: return PasteMessages::busy;
    case accessibilityPermissionRequired: return PasteMessages::permissionRequired;
    case destinationUnavailable:
    case destinationChanged: return PasteMessages::destinationChanged;
    case shortcutReleaseTimedOut: return PasteMessages::releaseKeys;
    case clipboardSnapshotIncomplete: return PasteMessages::clipboardNotPreservable;
  }
  return {};
}

}  // namespace

bool isDelivered(const PasteDeliveryResult& result) {
  return result.outcome.kind == PasteDeliveryOutcome::Kind::delivered;
}

std::string pasteMessage(const PasteDeliveryResult& result) {
  if (result.clipboardRestoration != PasteClipboardRestoration::failed) {
    return std::string(messageOf(result.outcome.kind));
  }
  return std::string(isDelivered(result) ? PasteMessages::deliveredWithoutRestoring
                                         : PasteMessages::stoppedWithoutRestoring);
}

std::string pasteMessage(PasteTargetFreezeError error, std::string_view shortcut) {
  switch (error) {
    case PasteTargetFreezeError::accessibilityPermissionRequired: return std::string(PasteMessages::permissionRequired);
    case PasteTargetFreezeError::destinationUnavailable:
      return std::string(PasteMessages::focusDestination).append(shortcut);
    case PasteTargetFreezeError::destinationChanged: return std::string(PasteMessages::destinationChangedAtStart);
  }
  return {};
}

}  // namespace quillo
