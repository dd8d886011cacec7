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

Activity restoredText(std::size_t restoredCount, std::size_t failedCount, const std::string& reason) {
  if (failedCount > 0) {
    return Activity::failure(
        fmt::format("Put back {} from Trash; {} could not be put back: {}", restoredCount, failedCount, reason));
  }
  if (restoredCount == 1) return Activity::success("Artifact put back from Trash");
  return Activity::success(fmt::format("{} artifacts put back from Trash", restoredCount));
}

}  // namespace

TrashFlow::TrashFlow(ModelContext& context, LibraryFlow& library, EditingFlow& editing)
    : context_(context), library_(library), editing_(editing) {}

void TrashFlow::moveArtifactsToTrash(std::vector<UUID> ids) {
  if (ids.empty()) return;
  start([this, ids = std::move(ids)]() mutable { return move(std::move(ids)); });
}

void TrashFlow::undoMoveToTrash() {
  if (lastTrashed_.empty()) return;
  start([this] {
    std::vector<Trashed> trashed = lastTrashed_;
    remember({});
    return restore(std::move(trashed));
  });
}

void TrashFlow::start(std::move_only_function<Task<Activity>()> operation) {
  if (isInProgress() || context_.isTerminating) return;
  context_.state.set<&State::trashIsInProgress>(true);
  context_.flights.start([this, operation = std::move(operation)]() mutable { return run(operation()); });
}

Task<> TrashFlow::run(Task<Activity> operation) {
  Task<Outcome<Activity>> running = outcomeOf(std::move(operation));
  Outcome<Activity> outcome = co_await std::move(running);
  context_.state.set<&State::trashIsInProgress>(false);
  context_.activity.show(outcome ? std::move(*outcome) : Activity::failure(failureText(outcome.error())));
}

void TrashFlow::remember(std::vector<Trashed> trashed) {
  lastTrashed_ = std::move(trashed);
  context_.state.set<&State::undoableTrashCount>(lastTrashed_.size());
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
  std::vector<Trashed> restorable;
  for (const UUID& id : ids) {
    Task<Outcome<std::optional<std::filesystem::path>>> moving =
        outcomeOf(context_.services.repository.moveToTrash(id));
    const auto outcome = co_await std::move(moving);
    if (outcome) {
      moved.push_back(id);
      if (*outcome) restorable.push_back({id, **outcome});
    } else {
      rethrowCancellation(outcome.error());
    }
  }
  // A move that moved nothing leaves the one before it to be undone.
  if (!moved.empty()) remember(std::move(restorable));
  library_.forget(moved);
  // What somebody else has removed could not be moved, and is not there either.
  if (moved.size() < ids.size()) library_.libraryChanged();
  co_return outcomeText(moved.size(), ids.size() - moved.size());
}

Task<Activity> TrashFlow::restore(std::vector<Trashed> trashed) {
  std::vector<UUID> restored;
  std::string reason;
  for (const Trashed& each : trashed) {
    Task<Outcome<void>> restoring = outcomeOf(context_.services.repository.restoreFromTrash(each.id, each.path));
    const Outcome<void> outcome = co_await std::move(restoring);
    if (outcome) {
      restored.push_back(each.id);
    } else {
      rethrowCancellation(outcome.error());
      reason = failureText(outcome.error());
    }
  }
  if (!restored.empty()) {
    Task<> reloading = library_.reload();
    co_await std::move(reloading);
    library_.select(restored.front());
  }
  co_return restoredText(restored.size(), trashed.size() - restored.size(), reason);
}

/// An edit goes to the Trash with its artifact, so that it is there when the artifact is taken out again.
Task<bool> TrashFlow::saveDrafts(std::vector<UUID> ids) {
  const auto& selected = context_.state->selectedArtifact;
  if (!selected || std::ranges::find(ids, selected->id()) == ids.end()) co_return true;
  Task<SaveOutcome> saving = editing_.save(SaveFeedback::silent);
  co_return co_await std::move(saving) != SaveOutcome::failed;
}

}  // namespace quillo
