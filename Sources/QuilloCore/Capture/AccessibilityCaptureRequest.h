#pragma once

#include <concepts>
#include <exception>
#include <memory>
#include <type_traits>
#include <utility>

#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloCore/Capture/AccessibilityCaptureError.h"
#include "QuilloCore/Capture/AccessibilitySnapshotCapture.h"
#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// Runs `operation(control)`, a synchronous function, on the queue and waits for what it returns or throws. The caller
/// is released with AccessibilityCaptureError (captureTimedOut) when `timeout` seconds have passed, and at once with
/// OperationCancelled when it is cancelled, also while the operation is stuck in a call. The operation is not
/// interrupted: it runs to the control's next checkpoint, and what it yields then is dropped. Until it has ended, the
/// queue's next operation waits; so an operation owns or shares what it uses. The clock outlives the queue.
template <std::invocable<SharedAccessibilityCaptureControl> Operation>
Task<std::invoke_result_t<Operation&, SharedAccessibilityCaptureControl>> runCancellableAccessibilityOperation(
    MonotonicClock& clock, SerialQueue& queue, double timeout, Operation operation) {
  using T = std::invoke_result_t<Operation&, SharedAccessibilityCaptureControl>;
  Task<> check = checkCancellation();
  co_await std::move(check);
  auto control = std::make_shared<AccessibilityCaptureControl>(timeout, [&clock] { return clock.uptimeNanoseconds(); });
  control->checkpoint();
  auto request = std::make_shared<PendingResult<T>>();
  // Whatever ends the wait, the walk is no longer wanted. A deadline that has passed keeps its name.
  request->whenResolved([control] { control->cancel(); });
  const Timer timer = clock.callAt(control->deadlineUptimeNanoseconds(), [control, request] {
    const auto look = [&] { control->checkpoint(); };
    if (auto stop = outcomeOfCall(look); !stop) request->fail(std::move(stop.error()));
  });
  queue.post([control, request, operation = std::move(operation)]() mutable {
    if (request->isResolved()) return;
    auto run = [&] { return operation(SharedAccessibilityCaptureControl(control)); };
    request->resolve(outcomeOfCall(run));
  });
  Task<T> waiting = waitFor(request);
  co_return co_await std::move(waiting);
}

}  // namespace quillo
