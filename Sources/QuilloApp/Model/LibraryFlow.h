#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <vector>

#include "QuilloApp/Model/EditingFlow.h"
#include "QuilloApp/Model/LoadedArtifactCache.h"
#include "QuilloApp/Model/ModelContext.h"
#include "QuilloApp/Model/SearchFlow.h"
#include "QuilloCore/Artifacts/LibraryListing.h"
#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// The list of artifacts, the selection, and the contents of what is selected.
///
/// The drafts always belong to the artifact whose contents were applied last: a new selection is applied only after
/// pending edits are on the disk.
class LibraryFlow {
 public:
  LibraryFlow(ModelContext& context, LoadedArtifactCache& cache, EditingFlow& editing, const SearchFlow& search);

  /// Makes the library's directory where it is missing, and lists it.
  Task<> start();
  Task<> reload();
  void libraryChanged();

  void select(std::optional<UUID> id);

  /// Counts the changes of the selection.
  std::uint64_t selectionGeneration() const { return selectionGeneration_; }

  /// Drops artifacts that are no longer on the disk. The selection moves to the one that takes its place.
  void forget(const std::vector<UUID>& ids);

 private:
  bool isCurrentSelectionRequest(std::uint64_t generation) const { return generation == selectionGeneration_; }
  bool isApplied(const std::optional<UUID>& id) const;
  Task<Outcome<LibraryListing>> survey();
  void showListingFailure(const std::exception_ptr& error);
  void applyListing(Outcome<LibraryListing> outcome);
  std::optional<UUID> neighbour(const UUID& id, const std::vector<UUID>& without) const;

  Task<> followChanges();
  Task<> applySelection(std::optional<UUID> id, std::uint64_t generation);
  /// Returns whether the selection may move on.
  Task<bool> saveBeforeLeaving(std::uint64_t generation);
  Task<Outcome<OpenArtifact>> load(UUID id);
  Task<> refreshSelected(UUID id);

  ModelContext& context_;
  LoadedArtifactCache& cache_;
  EditingFlow& editing_;
  const SearchFlow& search_;
  std::uint64_t selectionGeneration_ = 0;
  bool isFollowingChanges_ = false;
  bool hasMoreChanges_ = false;
};

}  // namespace quillo
