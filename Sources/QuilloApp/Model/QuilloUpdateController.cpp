#include "QuilloApp/Model/QuilloUpdateController.h"

#include <fmt/format.h>

#include <chrono>
#include <exception>
#include <utility>

#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Preferences/UserDefaults.h"
#include "QuilloCore/Updates/SoftwareUpdateError.h"

namespace quillo {
namespace {

constexpr const char* checksKey = "automaticUpdateChecks";
constexpr const char* downloadsKey = "automaticUpdateDownloads";
constexpr const char* lastCheckKey = "lastUpdateCheck";

bool flag(const UserDefaults& preferences, const char* key, bool otherwise) {
  const auto json = preferences.data(key);
  if (json == "true") return true;
  return json == "false" ? false : otherwise;
}

}  // namespace

template <class Change>
void QuilloUpdateController::change(Change edit) {
  SoftwareUpdateState state = context_.state->softwareUpdates;
  edit(state);
  context_.state.set<&QuilloModelState::softwareUpdates>(std::move(state));
}

void QuilloUpdateController::setPhase(Phase phase, std::string message) {
  change([&](SoftwareUpdateState& state) {
    state.phase = phase;
    state.message = std::move(message);
    state.newVersion = update_ ? update_->version : std::string();
  });
}

void QuilloUpdateController::start() {
  const UserDefaults& preferences = context_.services.preferences;
  change([&](SoftwareUpdateState& state) {
    state.checksAutomatically = flag(preferences, checksKey, state.checksAutomatically);
    state.downloadsAutomatically = flag(preferences, downloadsKey, state.downloadsAutomatically);
    if (const auto text = preferences.string(lastCheckKey)) state.lastCheck = parseDate(*text);
  });
  begin(Phase::looking, &QuilloUpdateController::look, UpdateAttendance::unattended);
  context_.tasks.start([this] { return checkWhenDue(); });
}

void QuilloUpdateController::lookAgain() {
  if (context_.state->softwareUpdates.phase == Phase::unavailable)
    begin(Phase::looking, &QuilloUpdateController::look, UpdateAttendance::unattended);
}

void QuilloUpdateController::checkForUpdates() {
  if (canCheckForUpdates()) begin(Phase::checking, &QuilloUpdateController::check, UpdateAttendance::user);
}

void QuilloUpdateController::download() {
  if (update_ && canCheckForUpdates())
    begin(Phase::downloading, &QuilloUpdateController::fetch, UpdateAttendance::user);
}

void QuilloUpdateController::install() {
  if (update_ && canCheckForUpdates()) begin(Phase::installing, &QuilloUpdateController::put, UpdateAttendance::user);
}

void QuilloUpdateController::cancel() {
  if (context_.state->softwareUpdates.isBusy()) operation_.cancel();
}

void QuilloUpdateController::begin(Phase phase, Task<> (QuilloUpdateController::*operation)(UpdateAttendance),
                                   UpdateAttendance attendance) {
  if (phase != Phase::looking) phaseBefore_ = context_.state->softwareUpdates.phase;
  setPhase(phase);
  operation_ = context_.tasks.start([this, operation, attendance] { return guard(operation, attendance); });
}

Task<> QuilloUpdateController::guard(Task<> (QuilloUpdateController::*operation)(UpdateAttendance),
                                     UpdateAttendance attendance) {
  try {
    Task<> running = (this->*operation)(attendance);
    co_await std::move(running);
  } catch (const OperationCancelled&) {
    setPhase(phaseBefore_);
  } catch (const SoftwareUpdateError& error) {
    fail(error.isUnavailability() ? Phase::unavailable : Phase::failed, error.errorDescription(), attendance);
  } catch (const std::exception& error) {
    fail(Phase::failed, error.what(), attendance);
  }
}

Task<> QuilloUpdateController::look(UpdateAttendance /*attendance*/) {
  Task<SoftwarePackage> looking = context_.services.softwareUpdates.installedPackage();
  installed_ = co_await std::move(looking);
  setPhase(Phase::ready);
  if (isDue()) begin(Phase::checking, &QuilloUpdateController::check, UpdateAttendance::unattended);
}

Task<> QuilloUpdateController::check(UpdateAttendance attendance) {
  SoftwareUpdateService& service = context_.services.softwareUpdates;
  if (!installed_) {
    Task<SoftwarePackage> looking = service.installedPackage();
    installed_ = co_await std::move(looking);
  }
  Task<std::optional<SoftwarePackage>> finding = service.findUpdate(*installed_, attendance);
  update_ = co_await std::move(finding);
  const Date now = context_.services.wallClock.now();
  change([&](SoftwareUpdateState& state) { state.lastCheck = now; });
  setPhase(update_ ? Phase::available : Phase::upToDate);
  tell(attendance, update_ ? fmt::format("Quillo {} is available", update_->version) : "Quillo is up to date");
  try {
    context_.services.preferences.setString(lastCheckKey, formatDateSeconds(now));
  } catch (const std::exception& error) {
    context_.activity.showFailure(error.what());
  }
  if (update_ && context_.state->softwareUpdates.downloadsAutomatically)
    begin(Phase::downloading, &QuilloUpdateController::fetch, UpdateAttendance::unattended);
}

Task<> QuilloUpdateController::fetch(UpdateAttendance attendance) {
  Task<> downloading = context_.services.softwareUpdates.download(*update_, attendance);
  co_await std::move(downloading);
  setPhase(Phase::downloaded);
  tell(attendance, fmt::format("Quillo {} is downloaded", update_->version));
}

Task<> QuilloUpdateController::put(UpdateAttendance attendance) {
  Task<> installing = context_.services.softwareUpdates.install(*update_, attendance);
  co_await std::move(installing);
  setPhase(Phase::installed);
  tell(attendance, fmt::format("Quillo {} is installed; it is used from the next start on", update_->version));
}

Task<> QuilloUpdateController::checkWhenDue() {
  while (true) {
    Task<> pause = sleepFor(context_.services.clock, dueCheckInterval);
    co_await std::move(pause);
    if (isDue() && canCheckForUpdates())
      begin(Phase::checking, &QuilloUpdateController::check, UpdateAttendance::unattended);
  }
}

bool QuilloUpdateController::isDue() const {
  const SoftwareUpdateState& state = context_.state->softwareUpdates;
  if (!state.checksAutomatically || state.phase == Phase::installed) return false;
  if (!state.lastCheck) return true;
  const auto elapsed = std::chrono::duration<double>(context_.services.wallClock.now() - *state.lastCheck).count();
  // A last check in the future was made by a clock that has been put right since.
  return elapsed >= automaticCheckInterval || elapsed < 0;
}

void QuilloUpdateController::fail(Phase phase, const std::string& message, UpdateAttendance attendance) {
  setPhase(phase, message);
  if (attendance == UpdateAttendance::user) context_.activity.showFailure(message);
}

void QuilloUpdateController::tell(UpdateAttendance attendance, const std::string& message) {
  if (attendance == UpdateAttendance::user) context_.activity.showSuccess(message);
}

void QuilloUpdateController::setChecksAutomatically(bool isOn) {
  change([&](SoftwareUpdateState& state) { state.checksAutomatically = isOn; });
  keepFlag(checksKey, isOn);
  if (isDue() && canCheckForUpdates())
    begin(Phase::checking, &QuilloUpdateController::check, UpdateAttendance::unattended);
}

void QuilloUpdateController::setDownloadsAutomatically(bool isOn) {
  change([&](SoftwareUpdateState& state) { state.downloadsAutomatically = isOn; });
  keepFlag(downloadsKey, isOn);
  if (isOn && context_.state->softwareUpdates.phase == Phase::available)
    begin(Phase::downloading, &QuilloUpdateController::fetch, UpdateAttendance::unattended);
}

void QuilloUpdateController::keepFlag(const char* key, bool isOn) {
  try {
    context_.services.preferences.setData(key, isOn ? "true" : "false");
  } catch (const std::exception& error) {
    context_.activity.showFailure(error.what());
  }
}

}  // namespace quillo
