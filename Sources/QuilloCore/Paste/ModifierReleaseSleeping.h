#pragma once

#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// How the wait for released keys passes its time.
class ModifierReleaseSleeping {
 public:
  virtual ~ModifierReleaseSleeping() = default;
  virtual Task<> sleep(double seconds) = 0;
};

/// Sleeps on the task.
class ClockModifierReleaseSleeping final : public ModifierReleaseSleeping {
 public:
  explicit ClockModifierReleaseSleeping(MonotonicClock& clock) : clock_(clock) {}
  Task<> sleep(double seconds) override { return sleepFor(clock_, seconds); }

 private:
  MonotonicClock& clock_;
};

}  // namespace quillo
