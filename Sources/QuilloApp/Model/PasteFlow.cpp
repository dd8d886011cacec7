#include "QuilloApp/Model/PasteFlow.h"

#include <utility>

#include "QuilloApp/Model/EditingFlow.h"
#include "QuilloApp/Model/FailureText.h"
#include "QuilloCore/Artifacts/ArtifactPasteTextRenderer.h"
#include "QuilloCore/Artifacts/ArtifactRepository.h"
#include "QuilloCore/Clipboard/ClipboardPayloadWriter.h"
#include "QuilloCore/Paste/PasteDeliveryService.h"
#include "QuilloCore/Paste/PasteMessages.h"

namespace quillo {
namespace {

AccessibilityTrustPrompt prompt(bool mayAsk) {
  return mayAsk ? AccessibilityTrustPrompt::askUser : AccessibilityTrustPrompt::silent;
}

}  // namespace

PasteFlow::PasteFlow(ModelContext& context, EditingFlow& editing) : context_(context), editing_(editing) {}

bool PasteFlow::canPasteSelectedArtifact() const {
  return context_.state->selection && !pasteIsInProgress_ && !context_.isTerminating;
}

bool PasteFlow::mayStart() {
  if (context_.isTerminating) return false;
  if (pasteIsInProgress_) {
    context_.activity.showFailure(std::string(PasteMessages::busy));
    return false;
  }
  if (!context_.state->selection) {
    context_.activity.showFailure("Select a capture in the library first");
    return false;
  }
  return true;
}

void PasteFlow::preparePasteDestinationForMenu() {
  menuPasteResolution_.reset();
  // Opening the menu asks for nothing; choosing the item may.
  if (canPasteSelectedArtifact()) menuPasteResolution_ = freezeDestination(std::nullopt, false);
}

void PasteFlow::pasteSelectedArtifactFromMenu() {
  const std::optional<Resolution> resolution = std::exchange(menuPasteResolution_, std::nullopt);
  if (!mayStart()) return;
  if (!resolution) {
    context_.activity.showFailure(std::string(PasteMessages::openMenuFromDestination));
    return;
  }
  start(*resolution, true);
}

void PasteFlow::pasteSelectedArtifact(std::optional<std::int32_t> processIdentifier) {
  if (mayStart()) start(freezeDestination(processIdentifier, true), false);
}

void PasteFlow::start(const Resolution& resolution, bool isFromMenu) {
  pasteIsInProgress_ = true;
  context_.activity.begin(Activity::Kind::pasting);
  context_.flights.start([this, resolution, isFromMenu] { return run(resolution, isFromMenu); });
}

PasteFlow::Resolution PasteFlow::freezeDestination(std::optional<std::int32_t> processIdentifier, bool mayAsk) {
  return context_.tasks.spawn([this, processIdentifier, mayAsk] { return resolveTarget(processIdentifier, mayAsk); });
}

Task<PasteFlow::Frozen> PasteFlow::resolveTarget(std::optional<std::int32_t> processIdentifier, bool mayAsk) {
  PasteDeliveryService& service = context_.services.pasteDeliveryService;
  if (!processIdentifier) {
    Task<std::optional<std::int32_t>> asking = service.captureFrontmostDestinationProcessIdentifier();
    processIdentifier = co_await std::move(asking);
  }
  if (!processIdentifier) co_return std::unexpected(PasteTargetFreezeError::destinationUnavailable);
  Task<Frozen> resolving = service.resolveTarget(*processIdentifier, prompt(mayAsk));
  co_return co_await std::move(resolving);
}

Task<> PasteFlow::run(Resolution resolution, bool isFromMenu) {
  Task<Outcome<Activity>> pasting = outcomeOf(paste(std::move(resolution), isFromMenu));
  Outcome<Activity> outcome = co_await std::move(pasting);
  pasteIsInProgress_ = false;
  context_.activity.show(outcome ? std::move(*outcome) : Activity::failure(failureText(outcome.error())));
}

Task<Activity> PasteFlow::paste(Resolution resolution, bool isFromMenu) {
  Task<ClipboardPayload> making = makePayload();
  ClipboardPayload payload = co_await std::move(making);
  Task<Frozen> freezing = resolution.value();
  const Frozen frozen = co_await std::move(freezing);
  if (!frozen) {
    co_return Activity::failure(
        isFromMenu ? std::string(PasteMessages::openMenuFromDestination)
                   : pasteMessage(frozen.error(), context_.state->hotKeyConfiguration.paste.displayString()));
  }
  Task<PasteDeliveryResult> delivering =
      context_.services.pasteDeliveryService.deliver(std::move(payload), *frozen, prompt(true));
  const PasteDeliveryResult result = co_await std::move(delivering);
  co_return isDelivered(result) ? Activity::success(pasteMessage(result)) : Activity::failure(pasteMessage(result));
}

void PasteFlow::copySelectedArtifactToClipboard() {
  if (!mayStart()) return;
  context_.flights.start([this] { return copy(); });
}

Task<> PasteFlow::copy() {
  Task<Outcome<Activity>> copying = outcomeOf(copyToClipboard());
  Outcome<Activity> outcome = co_await std::move(copying);
  context_.activity.show(outcome ? std::move(*outcome) : Activity::failure(failureText(outcome.error())));
}

Task<Activity> PasteFlow::copyToClipboard() {
  Task<ClipboardPayload> making = makePayload();
  ClipboardPayload payload = co_await std::move(making);
  const QuilloModelServices& services = context_.services;
  Task<Outcome<bool>> writing = outcomeOf(
      services.clipboardWriter.write(std::move(payload), ClipboardComposition::singleItem, services.pasteboard));
  const Outcome<bool> accepted = co_await std::move(writing);
  if (!accepted) rethrowCancellation(accepted.error());
  if (accepted.value_or(false)) co_return Activity::success("Screenshot, interface map, and note copied");
  co_return Activity::failure(std::string(PasteMessages::clipboardRejectedArtifact));
}

Task<ClipboardPayload> PasteFlow::makePayload() {
  const UUID id = *context_.state->selection;
  const auto& selected = context_.state->selectedArtifact;
  if (selected && selected->id() == id) {
    co_return ClipboardPayload{id, selected->contents->screenshotPNG,
                               ArtifactPasteTextRenderer::render(editing_.draftedManifest())};
  }
  Task<LoadedArtifact> loading = context_.services.repository.load(id);
  LoadedArtifact loaded = co_await std::move(loading);
  co_return ClipboardPayload{id, std::move(loaded.screenshotPNG),
                             ArtifactPasteTextRenderer::render(loaded.stored.manifest)};
}

}  // namespace quillo
