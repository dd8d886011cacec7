#pragma once

#include <cstddef>
#include <vector>

#include "QuilloApp/Model/LibraryFlow.h"
#include "QuilloApp/Model/ModelContext.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// Moves artifacts to the Trash, one request at a time.
class TrashFlow {
 public:
  TrashFlow(ModelContext& context, LibraryFlow& library, EditingFlow& editing);

  void moveArtifactsToTrash(std::vector<UUID> ids);
  bool isInProgress() const { return context_.state->trashIsInProgress; }

 private:
  Task<> run(std::vector<UUID> ids);
  Task<Activity> move(std::vector<UUID> ids);
  Task<bool> saveDrafts(std::vector<UUID> ids);

  ModelContext& context_;
  LibraryFlow& library_;
  EditingFlow& editing_;
};

}  // namespace quillo
