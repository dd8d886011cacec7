#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "QuilloApp/Model/ModelContext.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Updates/SoftwareUpdateService.h"

namespace quillo {

/// Keeps Quillo up to date through the system's package manager. One operation runs at a time; what it is and what came
/// of it stands in the model's `softwareUpdates`. Main thread only.
class QuilloUpdateController {
 public:
  static constexpr double automaticCheckInterval = 24 * 3600;  ///< seconds of civil time between automatic checks
  static constexpr double dueCheckInterval = 3600;             ///< seconds between two looks whether one is due

  explicit QuilloUpdateController(ModelContext& context) : context_(context) {}

  void start();

  bool canCheckForUpdates() const { return context_.state->softwareUpdates.canCheck(); }
  /// At the user's wish: the outcome is told as an activity, too.
  void checkForUpdates();
  /// Looks again for somebody to ask, where there was nobody.
  void lookAgain();
  void download();
  void install();
  /// Ends what runs; nothing happens when nothing does.
  void cancel();

  void setChecksAutomatically(bool isOn);
  void setDownloadsAutomatically(bool isOn);

 private:
  using Phase = SoftwareUpdateState::Phase;

  void begin(Phase phase, Task<> (QuilloUpdateController::*operation)(UpdateAttendance), UpdateAttendance attendance);
  /// Runs the operation and turns what it throws into a phase.
  Task<> guard(Task<> (QuilloUpdateController::*operation)(UpdateAttendance), UpdateAttendance attendance);
  Task<> look(UpdateAttendance attendance);
  Task<> check(UpdateAttendance attendance);
  Task<> fetch(UpdateAttendance attendance);
  Task<> put(UpdateAttendance attendance);
  Task<> checkWhenDue();
  bool isDue() const;

  void fail(Phase phase, const std::string& message, UpdateAttendance attendance);
  void tell(UpdateAttendance attendance, const std::string& message);
  void setPhase(Phase phase, std::string message = {});
  void keepFlag(const char* key, bool isOn);
  template <class Change>
  void change(Change edit);

  ModelContext& context_;
  std::optional<SoftwarePackage> installed_;
  std::optional<SoftwarePackage> update_;
  TaskHandle operation_;
  Phase phaseBefore_ = Phase::ready;  ///< what a cancelled operation goes back to
};

}  // namespace quillo
