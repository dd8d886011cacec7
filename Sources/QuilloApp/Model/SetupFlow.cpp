#include "QuilloApp/Model/SetupFlow.h"

#include <exception>
#include <string>
#include <utility>

#include "QuilloCore/Preferences/LoginItem.h"
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

void SetupFlow::refreshSettings() {
  recheckCapturePermissions();
  context_.state.set<&QuilloModelState::startsAtLogin>(context_.services.loginItem.isEnabled());
  if (!std::exchange(isMeasuring_, true)) context_.tasks.start([this] { return measureLibrary(); });
}

Task<> SetupFlow::measureLibrary() {
  Task<Outcome<LibraryUsage>> measuring = outcomeOf(context_.services.libraryMeasuring.measure());
  const Outcome<LibraryUsage> usage = co_await std::move(measuring);
  isMeasuring_ = false;
  if (usage) context_.state.set<&QuilloModelState::libraryUsage>(std::optional(*usage));
}

void SetupFlow::setStartsAtLogin(bool startsAtLogin) {
  try {
    context_.services.loginItem.setEnabled(startsAtLogin);
  } catch (const std::exception& error) {
    context_.activity.showFailure(std::string("Quillo could not change whether it starts at login: ") + error.what());
  }
  context_.state.set<&QuilloModelState::startsAtLogin>(context_.services.loginItem.isEnabled());
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
