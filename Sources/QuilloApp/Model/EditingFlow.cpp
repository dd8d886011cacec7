#include "QuilloApp/Model/EditingFlow.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <string_view>
#include <utility>

#include "QuilloCore/Artifacts/ArtifactRepository.h"
#include "QuilloCore/Artifacts/ArtifactRepositoryError.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {

using State = QuilloModelState;

EditingFlow::EditingFlow(ModelContext& context, LoadedArtifactCache& cache) : context_(context), cache_(cache) {}

void EditingFlow::setDraftTitle(std::string title) {
  if (title == context_.state->draftTitle) return;
  context_.state.set<&State::draftTitle>(std::move(title));
  markEdited();
}

void EditingFlow::setDraftAnnotations(std::string annotations) {
  if (annotations == context_.state->draftAnnotations) return;
  context_.state.set<&State::draftAnnotations>(std::move(annotations));
  markEdited();
}

void EditingFlow::markEdited() {
  const std::uint64_t revision = ++editRevision_;
  context_.state.set<&State::hasUnsavedChanges>(true);
  autosaveTask_.cancel();
  autosaveTask_ = context_.tasks.start([this, revision] { return autosave(revision); });
}

Task<> EditingFlow::autosave(std::uint64_t revision) {
  Task<> pause = sleepFor(context_.services.clock, autosaveDelay);
  co_await std::move(pause);
  if (revision != editRevision_) co_return;
  // The next edit must not call this save back.
  autosaveTask_ = {};
  Task<SaveOutcome> saving = save(SaveFeedback::silent);
  co_await std::move(saving);
}

Task<SaveOutcome> EditingFlow::save(SaveFeedback feedback) {
  if (!context_.state->hasUnsavedChanges) co_return SaveOutcome::nothingToSave;
  if (!context_.state->selectedArtifact) {
    context_.activity.showFailure("Quillo could not identify the artifact whose changes need saving");
    co_return SaveOutcome::failed;
  }
  const OpenArtifact edited = *context_.state->selectedArtifact;
  const std::uint64_t revision = editRevision_;
  ArtifactManifest manifest = draftedManifest();
  manifest.modifiedAt = std::chrono::floor<std::chrono::seconds>(context_.services.wallClock.now());
  if (feedback == SaveFeedback::shown) context_.activity.begin(Activity::Kind::saving);
  context_.state.set<&State::isSavingEdits>(true);

  Task<Outcome<StoredArtifact>> updating =
      outcomeOf(context_.services.repository.update(edited.stored, std::move(manifest)));
  Outcome<StoredArtifact> updated = co_await std::move(updating);
  context_.state.set<&State::isSavingEdits>(false);
  if (!updated) co_return reportFailure(updated.error());
  apply({std::move(*updated), edited.contents}, revision);
  if (feedback == SaveFeedback::shown) context_.activity.end(Activity::Kind::saving);
  co_return SaveOutcome::saved;
}

void EditingFlow::apply(const OpenArtifact& persisted, std::uint64_t revision) {
  PublishedModelState& state = context_.state;
  state.set<&State::saveFailure>(std::optional<std::string>());
  std::uint64_t& applied = appliedSaveRevisionByArtifact_[persisted.id()];
  applied = std::max(applied, revision);
  cache_.replace(persisted);
  state.replaceListed(persisted.stored);
  if (!state->selectedArtifact || state->selectedArtifact->id() != persisted.id()) return;
  state.set<&State::selectedArtifact>(std::optional(persisted));
  if (applied == editRevision_) state.set<&State::hasUnsavedChanges>(false);
}

SaveOutcome EditingFlow::reportFailure(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const OperationCancelled&) {
    throw;
  } catch (const ArtifactRepositoryError& failure) {
    showFailure(failure.errorDescription());
    const bool isGone = std::holds_alternative<ArtifactRepositoryError::ArtifactNotFound>(failure.value());
    return isGone ? SaveOutcome::artifactIsGone : SaveOutcome::failed;
  } catch (const std::exception& failure) {
    showFailure(failure.what());
    return SaveOutcome::failed;
  }
}

void EditingFlow::showFailure(const std::string& reason) {
  context_.state.set<&State::saveFailure>(std::optional(reason));
  context_.activity.showFailure(reason);
}

void EditingFlow::open(const std::optional<OpenArtifact>& artifact) {
  autosaveTask_.cancel();
  PublishedModelState& state = context_.state;
  state.set<&State::selectedArtifact>(artifact);
  state.set<&State::draftTitle>(artifact ? artifact->stored.manifest.title : std::string());
  state.set<&State::draftAnnotations>(artifact ? artifact->stored.manifest.annotations : std::string());
  state.set<&State::hasUnsavedChanges>(false);
  state.set<&State::saveFailure>(std::optional<std::string>());
}

void EditingFlow::rebase(const OpenArtifact& artifact) {
  PublishedModelState& state = context_.state;
  const ArtifactManifest former = state->selectedArtifact->stored.manifest;
  const ArtifactManifest& present = artifact.stored.manifest;
  state.set<&State::selectedArtifact>(std::optional(artifact));
  if (state->draftTitle == former.title) state.set<&State::draftTitle>(present.title);
  if (state->draftAnnotations == former.annotations) state.set<&State::draftAnnotations>(present.annotations);
}

ArtifactManifest EditingFlow::draftedManifest() const {
  ArtifactManifest manifest = context_.state->selectedArtifact->stored.manifest;
  const std::string_view title = trimmingWhiteSpace(context_.state->draftTitle);
  manifest.title = title.empty() ? manifest.source.windowTitle : std::string(title);
  manifest.annotations = context_.state->draftAnnotations;
  return manifest;
}

}  // namespace quillo
