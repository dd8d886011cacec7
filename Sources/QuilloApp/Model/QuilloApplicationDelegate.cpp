#include "QuilloApp/Model/QuilloApplicationDelegate.h"

#include <utility>

#include "QuilloApp/Model/QuilloModel.h"
#include "QuilloApp/Model/QuilloUpdateController.h"

namespace quillo {

QuilloApplicationDelegate::QuilloApplicationDelegate(TaskExecutor mainExecutor) : tasks_(std::move(mainExecutor)) {}

void QuilloApplicationDelegate::installMenuBarUtility(QuilloModel& model, Openers openers) {
  model_ = &model;
  openers_ = std::move(openers);
  prepareForTermination_ = [&model] { return model.prepareForTermination(); };
}

void QuilloApplicationDelegate::setPrepareForTermination(std::function<Task<bool>()> prepareForTermination) {
  prepareForTermination_ = std::move(prepareForTermination);
}

std::vector<StatusMenuEntry> QuilloApplicationDelegate::menuWillOpen() {
  model_->prepareCaptureTargetForMenu();
  model_->preparePasteDestinationForMenu();
  return rebuildStatusMenu(statusMenuState(*model_));
}

void QuilloApplicationDelegate::perform(StatusMenuAction action) {
  switch (action) {
    case StatusMenuAction::captureFrontmostWindow: return model_->captureFrontmostWindowFromMenu();
    case StatusMenuAction::pasteSelectedArtifact: return model_->pasteSelectedArtifactFromMenu();
    case StatusMenuAction::openScreenRecordingSettings:
    case StatusMenuAction::openAccessibilitySettings: {
      const bool isAccessibility = action == StatusMenuAction::openAccessibilitySettings;
      const auto permission =
          isAccessibility ? ContextCapturePermission::accessibility : ContextCapturePermission::screenRecording;
      tasks_.start([this, permission] { return openSettings(permission); });
      return;
    }
    case StatusMenuAction::recheckCaptureAccess: return model_->recheckCapturePermissions();
    case StatusMenuAction::checkForUpdates:
      model_->updates().checkForUpdates();
      return model_->showOnboarding();  // where the outcome stands
    case StatusMenuAction::openLibrary: return openers_.openLibrary();
    case StatusMenuAction::openSetup: return model_->showOnboarding();
    case StatusMenuAction::quit: return openers_.quit();
  }
}

Task<> QuilloApplicationDelegate::openSettings(ContextCapturePermission permission) {
  Task<bool> requesting = model_->requestCapturePermission(permission);
  co_await std::move(requesting);
}

TerminationReply QuilloApplicationDelegate::applicationShouldTerminate(std::function<void(bool)> answer) {
  if (!prepareForTermination_) return TerminationReply::now;
  answers_.push_back(std::move(answer));
  if (!std::exchange(terminationIsPending_, true)) tasks_.start([this] { return awaitTermination(); });
  return TerminationReply::later;
}

Task<> QuilloApplicationDelegate::awaitTermination() {
  Task<bool> preparing = prepareForTermination_();
  const bool mayTerminate = co_await std::move(preparing);
  terminationIsPending_ = false;
  for (const auto& answer : std::exchange(answers_, {})) answer(mayTerminate);
}

Task<> QuilloApplicationDelegate::shutDown() {
  tasks_.cancelAll();
  Task<> ending = tasks_.whenEmpty();
  co_await std::move(ending);
}

}  // namespace quillo
