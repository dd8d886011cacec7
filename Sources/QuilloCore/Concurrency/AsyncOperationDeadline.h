#pragma once

#include <concepts>
#include <exception>
#include <memory>
#include <utility>

#include "QuilloCore/Concurrency/AsyncOperationDeadlineError.h"
#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Concurrency/TaskExecutor.h"

namespace quillo {

/// The one deadline runner. Starts `operation`, a function that makes a task, as an independent task on `executor`, and
/// returns as soon as the first of three things happens: it ends (with its value or its error), `timeout` seconds have
/// passed (AsyncOperationDeadlineError), or the caller is cancelled (OperationCancelled). In the last two cases the
/// operation is cancelled but not waited for: the caller goes on although the operation ignores it, and what it yields
/// later is dropped. So `operation` must own or share all that it uses; it should not run where the caller runs, unless
/// all that it does there is short.
template <std::invocable Operation>
Task<detail::TaskValueOf<Operation>> runCancellableAsyncOperation(MonotonicClock& clock, TaskExecutor executor,
                                                                  double timeout, Operation operation) {
  using T = detail::TaskValueOf<Operation>;
  Task<> check = checkCancellation();
  co_await std::move(check);
  auto request = std::make_shared<PendingResult<T>>();
  const Timer timer = clock.callAt(uptimeAfter(clock.uptimeNanoseconds(), timeout), [request, timeout] {
    request->fail(std::make_exception_ptr(AsyncOperationDeadlineError(AsyncOperationDeadlineError::Exceeded{timeout})));
  });
  const TaskHandle operationTask = detail::startResolving<T>(executor, request, std::move(operation));
  request->whenResolved([operationTask] { operationTask.cancel(); });
  Task<T> waiting = waitFor(request);
  co_return co_await std::move(waiting);
}

}  // namespace quillo
