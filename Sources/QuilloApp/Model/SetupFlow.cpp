#include "QuilloApp/Model/SetupFlow.h"

#include <exception>
#include <utility>

#include "QuilloCore/Preferences/UserDefaults.h"

namespace quillo {
namespace {

constexpr const char* onboardingVersionKey = "onboardingVersion";

}  // namespace

void SetupFlow::start() {
  setShowing(!isOnboardingCompleted());
  recheckCapturePermissions();
}

void SetupFlow::recheckCapturePermissions() {
  context_.tasks.start([this] { return readPermissions(); });
}

Task<> SetupFlow::readPermissions() {
  Task<ContextCapturePermissionState> reading = context_.services.permissions.state();
  const ContextCapturePermissionState state = co_await std::move(reading);
  context_.state.set<&QuilloModelState::capturePermissionState>(state);
}

Task<bool> SetupFlow::requestCapturePermission(ContextCapturePermission permission) {
  Task<bool> requesting = context_.services.permissions.request(permission);
  const bool isGranted = co_await std::move(requesting);
  Task<> reading = readPermissions();
  co_await std::move(reading);
  co_return isGranted;
}

bool SetupFlow::isOnboardingCompleted() const {
  return context_.services.preferences.integer(onboardingVersionKey).value_or(0) >= currentOnboardingVersion;
}

void SetupFlow::completeOnboarding() {
  try {
    context_.services.preferences.setInteger(onboardingVersionKey, currentOnboardingVersion);
  } catch (const std::exception& error) {
    context_.activity.showFailure(error.what());
  }
  setShowing(false);
}

}  // namespace quillo
