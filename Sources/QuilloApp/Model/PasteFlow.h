#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>

#include "QuilloApp/Model/ModelContext.h"
#include "QuilloApp/Model/OpenArtifact.h"
#include "QuilloCore/Clipboard/ClipboardPayload.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Paste/FrozenPasteTarget.h"

namespace quillo {

class EditingFlow;

/// The selected artifact's way out: into a destination, or onto the clipboard. What leaves is what is on the screen,
/// edits that are not saved yet included.
class PasteFlow {
 public:
  PasteFlow(ModelContext& context, EditingFlow& editing);

  void preparePasteDestinationForMenu();
  void pasteSelectedArtifactFromMenu();
  void pasteSelectedArtifact(std::optional<std::int32_t> processIdentifier);
  void copySelectedArtifactToClipboard();

  /// An artifact is selected, and no paste is running.
  bool canPasteSelectedArtifact() const;
  bool isInProgress() const { return pasteIsInProgress_; }

 private:
  using Frozen = std::expected<FrozenPasteTarget, PasteTargetFreezeError>;
  using Resolution = SpawnedTask<Frozen>;  // is there when the destination has been frozen

  bool mayStart();
  void start(const Resolution& resolution, bool isFromMenu);
  Resolution freezeDestination(std::optional<std::int32_t> processIdentifier, bool mayAsk);
  Task<Frozen> resolveTarget(std::optional<std::int32_t> processIdentifier, bool mayAsk);
  Task<> run(Resolution resolution, bool isFromMenu);
  Task<Activity> paste(Resolution resolution, bool isFromMenu);
  Task<> copy();
  Task<Activity> copyToClipboard();
  Task<ClipboardPayload> makePayload();

  ModelContext& context_;
  EditingFlow& editing_;
  bool pasteIsInProgress_ = false;
  std::optional<Resolution> menuPasteResolution_;
};

}  // namespace quillo
