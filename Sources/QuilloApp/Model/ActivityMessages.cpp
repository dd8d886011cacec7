#include "QuilloApp/Model/ActivityMessages.h"

#include <utility>

namespace quillo {

ActivityMessages::ActivityMessages(PublishedModelState& state, MonotonicClock& clock, TaskGroup& tasks)
    : state_(state), clock_(clock), tasks_(tasks) {}

void ActivityMessages::show(Activity activity, std::function<void()> whenGone) {
  activityDismissalTask_.cancel();
  const std::uint64_t number = ++number_;
  const auto formerWhenGone = std::exchange(whenGone_, std::move(whenGone));
  const double duration = activity.kind == Activity::Kind::success ? successDuration : failureDuration;
  const bool isMessage = activity.isMessage();
  state_.set<&QuilloModelState::activity>(std::move(activity));
  if (isMessage) {
    activityDismissalTask_ = tasks_.start([this, duration, number] { return dismissLater(duration, number); });
  }
  if (formerWhenGone) formerWhenGone();
}

void ActivityMessages::beginQuietly(Activity::Kind kind) {
  if (state_->activity.kind == Activity::Kind::idle) begin(kind);
}

void ActivityMessages::end(Activity::Kind kind) {
  if (state_->activity.kind == kind) show({});
}

Task<> ActivityMessages::dismissLater(double seconds, std::uint64_t number) {
  Task<> pause = sleepFor(clock_, seconds);
  co_await std::move(pause);
  // A newer one may have come while this task was on its way back.
  if (number_ == number) show({});
}

}  // namespace quillo
