#pragma once

#include <functional>

#include "QuilloCore/Concurrency/JobQueue.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// Suspends the calling task until the job that it gives to `install` has been called, once and from any thread; the
/// task goes on on its own queue. When the task is cancelled, `onCancel` is called (perhaps before `install`, never
/// after the task has gone on): it has to see to it that the task is resumed. Everything that waits is made from this.
Task<> suspendUntilResumed(std::move_only_function<void(Job resume)> install, std::function<void()> onCancel);

/// Throws OperationCancelled when the calling task has been cancelled.
Task<> checkCancellation();

}  // namespace quillo
