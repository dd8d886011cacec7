#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "QuilloApp/Model/LibraryFlow.h"
#include "QuilloApp/Model/ModelContext.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// Moves artifacts to the Trash and back again, one request at a time.
class TrashFlow {
 public:
  TrashFlow(ModelContext& context, LibraryFlow& library, EditingFlow& editing);

  void moveArtifactsToTrash(std::vector<UUID> ids);
  /// Puts back what the last move has moved; only the last one can be undone, and only once.
  void undoMoveToTrash();
  bool isInProgress() const { return context_.state->trashIsInProgress; }

 private:
  /// A bundle in the Trash, and where it is there.
  struct Trashed {
    UUID id;
    std::filesystem::path path;
  };

  void start(std::move_only_function<Task<Activity>()> operation);
  Task<> run(Task<Activity> operation);
  Task<Activity> move(std::vector<UUID> ids);
  Task<Activity> restore(std::vector<Trashed> trashed);
  void remember(std::vector<Trashed> trashed);
  Task<bool> saveDrafts(std::vector<UUID> ids);

  ModelContext& context_;
  LibraryFlow& library_;
  EditingFlow& editing_;
  std::vector<Trashed> lastTrashed_;
};

}  // namespace quillo
