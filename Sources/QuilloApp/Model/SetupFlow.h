#pragma once

#include <cstdint>

#include "QuilloApp/Model/ModelContext.h"
#include "QuilloCore/Capture/ContextCapturePermission.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// What a new user has to see to (the permissions, and the guide that explains them), and the settings beside them.
class SetupFlow {
 public:
  /// The guide that this version shows; kept under "onboardingVersion" when the user has completed it.
  static constexpr std::int64_t currentOnboardingVersion = 1;

  explicit SetupFlow(ModelContext& context) : context_(context) {}

  void start();
  void recheckCapturePermissions();
  Task<bool> requestCapturePermission(ContextCapturePermission permission);

  void refreshSettings();
  void setStartsAtLogin(bool startsAtLogin);

  bool isOnboardingCompleted() const;
  void showOnboarding() { setShowing(true); }
  void hideOnboarding() { setShowing(false); }
  void completeOnboarding();

 private:
  Task<> readPermissions();
  Task<> measureLibrary();
  void setShowing(bool isShowing) { context_.state.set<&QuilloModelState::isShowingOnboarding>(isShowing); }

  ModelContext& context_;
  bool isMeasuring_ = false;
};

}  // namespace quillo
