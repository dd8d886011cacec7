#include "QuilloApp/Model/TrashFlow.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "QuilloApp/Model/FailureText.h"
#include "QuilloCore/Artifacts/ArtifactRepository.h"

namespace quillo {
namespace {

using State = QuilloModelState;

Activity outcomeText(std::size_t movedCount, std::size_t failedCount) {
  if (failedCount > 0) {
    return Activity::failure(fmt::format("Moved {} to Trash; {} could not be moved", movedCount, failedCount));
  }
  if (movedCount == 1) return Activity::success("Artifact moved to Trash");
  return Activity::success(fmt::format("{} artifacts moved to Trash", movedCount));
}

}  // namespace

TrashFlow::TrashFlow(ModelContext& context, LibraryFlow& library, EditingFlow& editing)
    : context_(context), library_(library), editing_(editing) {}

void TrashFlow::moveArtifactsToTrash(std::vector<UUID> ids) {
  if (ids.empty() || isInProgress() || context_.isTerminating) return;
  context_.state.set<&State::trashIsInProgress>(true);
  context_.flights.start([this, ids = std::move(ids)]() mutable { return run(std::move(ids)); });
}

Task<> TrashFlow::run(std::vector<UUID> ids) {
  Task<Outcome<Activity>> moving = outcomeOf(move(std::move(ids)));
  Outcome<Activity> outcome = co_await std::move(moving);
  context_.state.set<&State::trashIsInProgress>(false);
  context_.activity.show(outcome ? std::move(*outcome) : Activity::failure(failureText(outcome.error())));
}

Task<Activity> TrashFlow::move(std::vector<UUID> ids) {
  const std::uint64_t generation = library_.selectionGeneration();
  Task<bool> saving = saveDrafts(ids);
  const bool isSaved = co_await std::move(saving);
  // Its message says why.
  if (!isSaved) co_return Activity(context_.state->activity);
  if (generation != library_.selectionGeneration()) {
    co_return Activity::failure("The selected artifact changed before it could be moved");
  }
  std::vector<UUID> moved;
  for (const UUID& id : ids) {
    Task<Outcome<std::optional<std::filesystem::path>>> moving =
        outcomeOf(context_.services.repository.moveToTrash(id));
    const auto outcome = co_await std::move(moving);
    if (outcome) {
      moved.push_back(id);
    } else {
      rethrowCancellation(outcome.error());
    }
  }
  library_.forget(moved);
  // What somebody else has removed could not be moved, and is not there either.
  if (moved.size() < ids.size()) library_.libraryChanged();
  co_return outcomeText(moved.size(), ids.size() - moved.size());
}

/// An edit goes to the Trash with its artifact, so that it is there when the artifact is taken out again.
Task<bool> TrashFlow::saveDrafts(std::vector<UUID> ids) {
  const auto& selected = context_.state->selectedArtifact;
  if (!selected || std::ranges::find(ids, selected->id()) == ids.end()) co_return true;
  Task<SaveOutcome> saving = editing_.save(SaveFeedback::silent);
  co_return co_await std::move(saving) != SaveOutcome::failed;
}

}  // namespace quillo
