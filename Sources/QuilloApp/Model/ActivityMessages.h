#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "QuilloApp/Model/Activity.h"
#include "QuilloApp/Model/PublishedModelState.h"
#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

namespace quillo {

/// The activity line. A message stands for a while, and only the newest one's time counts; everything else stands until
/// its work is done.
class ActivityMessages {
 public:
  static constexpr double successDuration = 2.2;  ///< seconds
  static constexpr double failureDuration = 5;    ///< seconds

  ActivityMessages(PublishedModelState& state, MonotonicClock& clock, TaskGroup& tasks);

  /// `whenGone` is called once, when the message is dismissed or another activity takes its place.
  void show(Activity activity, std::function<void()> whenGone = {});
  void showSuccess(std::string message) { show(Activity::success(std::move(message))); }
  void showFailure(std::string message) { show(Activity::failure(std::move(message))); }

  /// Says that work is being done.
  void begin(Activity::Kind kind) { show({kind, {}}); }
  /// As `begin`, but says it only where nothing else is being said.
  void beginQuietly(Activity::Kind kind);
  /// The work is done; what is said of anything else stays.
  void end(Activity::Kind kind);

 private:
  Task<> dismissLater(double seconds, std::uint64_t number);

  PublishedModelState& state_;
  MonotonicClock& clock_;
  TaskGroup& tasks_;
  std::uint64_t number_ = 0;  // of the activity that is shown
  TaskHandle activityDismissalTask_;
  std::function<void()> whenGone_;
};

}  // namespace quillo
