#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "QuilloApp/Model/CaptureHeadsUpPanel.h"
#include "QuilloApp/Model/LibraryFlow.h"
#include "QuilloApp/Model/ModelContext.h"
#include "QuilloCore/Artifacts/ArtifactModels.h"
#include "QuilloCore/Capture/ContextCaptureService.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// From the shortcut or the menu to a stored and selected artifact. One capture at a time: one that is asked for while
/// another runs is not begun, because the panel already shows the one that runs.
class CaptureFlow {
 public:
  CaptureFlow(ModelContext& context, LibraryFlow& library);

  void captureFrontmostWindow();
  void prepareCaptureTargetForMenu();
  void captureFrontmostWindowFromMenu();
  bool canCaptureFrontmostWindowFromMenu() const { return !captureIsInProgress_ && !context_.isTerminating; }

  bool isInProgress() const { return captureIsInProgress_; }

 private:
  using Target = FrozenContextCaptureTarget;
  using Resolution = SpawnedTask<Target>;  // is there when the target has been frozen

  void start(const Resolution& resolution, bool isFromMenu);
  Resolution freezeCaptureTarget();
  Task<> run(Resolution resolution, bool isFromMenu);
  Task<> capture(Resolution resolution, bool isFromMenu);
  Task<ContextArtifactDraft> makeDraft(Target target, std::shared_ptr<CaptureNotice> notice);
  ScreenshotObserver showProgressWhenPixelsAreThere(const std::shared_ptr<CaptureNotice>& notice);
  void reportCaptureFailure(const std::exception_ptr& error);
  void show(const CaptureFailureNotice& notice, std::string message);
  std::function<void()> hidingPanel() const;

  ModelContext& context_;
  LibraryFlow& library_;
  bool captureIsInProgress_ = false;
  std::optional<Target> activeCaptureTarget_;
  std::optional<Resolution> menuCaptureResolution_;
};

}  // namespace quillo
