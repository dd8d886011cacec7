#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "QuilloApp/Model/LoadedArtifactCache.h"
#include "QuilloApp/Model/ModelContext.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

enum class SaveFeedback : std::uint8_t { silent, shown };

enum class SaveOutcome : std::uint8_t {
  nothingToSave,
  saved,           ///< newer edits may have been made meanwhile
  failed,          ///< the edits stay, and the user has been told
  artifactIsGone,  ///< likewise, but there is nothing left that they could be saved to
};

/// The drafts of the selected artifact, and their way to the disk.
class EditingFlow {
 public:
  static constexpr double autosaveDelay = 0.65;  ///< seconds after the last edit

  EditingFlow(ModelContext& context, LoadedArtifactCache& cache);

  void setDraftTitle(std::string title);
  void setDraftAnnotations(std::string annotations);
  void markEdited();

  Task<SaveOutcome> save(SaveFeedback feedback);

  /// Begins anew with the drafts of what is selected now, if anything is. Edits that are not saved are lost.
  void open(const std::optional<OpenArtifact>& artifact);

  /// The selected artifact has been changed by somebody else: a draft that the user has not touched follows.
  void rebase(const OpenArtifact& artifact);

  /// What would be saved now. An artifact must be selected.
  ArtifactManifest draftedManifest() const;

 private:
  Task<> autosave(std::uint64_t revision);
  void apply(const OpenArtifact& persisted, std::uint64_t revision);
  void showFailure(const std::string& reason);
  SaveOutcome reportFailure(const std::exception_ptr& error);

  ModelContext& context_;
  LoadedArtifactCache& cache_;
  std::uint64_t editRevision_ = 0;
  std::map<UUID, std::uint64_t> appliedSaveRevisionByArtifact_;
  TaskHandle autosaveTask_;
};

}  // namespace quillo
