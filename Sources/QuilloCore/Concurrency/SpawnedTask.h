#pragma once

#include <concepts>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Concurrency/TaskExecutor.h"

namespace quillo {

/// Cancels a task that runs by itself. Copies stand for the same task; it runs on when all are gone.
class TaskHandle {
 public:
  TaskHandle() = default;

  /// From any thread; nothing happens when the task has ended. What the task waits for throws OperationCancelled.
  void cancel() const;

 private:
  struct State;
  explicit TaskHandle(std::shared_ptr<State> state) : state_(std::move(state)) {}
  friend TaskHandle startTask(const TaskExecutor& executor, std::move_only_function<Task<>()> body);

  std::shared_ptr<State> state_;
};

/// Starts a task of its own on the executor. The body sees to its errors itself: but for OperationCancelled, one that
/// leaves it ends the program.
TaskHandle startTask(const TaskExecutor& executor, std::move_only_function<Task<>()> body);

/// A task that runs by itself and whose result somebody waits for.
template <class T>
class SpawnedTask {
 public:
  SpawnedTask(TaskHandle handle, std::shared_ptr<PendingResult<T>> result)
      : handle_(std::move(handle)), result_(std::move(result)) {}

  void cancel() const { handle_.cancel(); }

  const TaskHandle& handle() const { return handle_; }

  /// Waits for the task's end, to be awaited once. Cancelling the waiting task releases it at once, and leaves the
  /// spawned one alone.
  Task<T> value() const { return waitFor(result_); }

 private:
  TaskHandle handle_;
  std::shared_ptr<PendingResult<T>> result_;
};

namespace detail {

template <class T>
struct TaskValue;
template <class T>
struct TaskValue<Task<T>> {
  using Type = T;
};

/// The value type of the task that a function makes.
template <class Operation>
using TaskValueOf = typename TaskValue<std::invoke_result_t<Operation&>>::Type;

template <class T>
Task<> resolveWith(std::shared_ptr<PendingResult<T>> result, std::move_only_function<Task<T>()> operation) {
  Task<Outcome<T>> running = outcomeOf<T>(operation());
  result->resolve(co_await std::move(running));
}

/// Starts the operation on the executor and resolves `result` with what it yields.
template <class T>
TaskHandle startResolving(const TaskExecutor& executor, std::shared_ptr<PendingResult<T>> result,
                          std::move_only_function<Task<T>()> operation) {
  return startTask(executor, [result = std::move(result), operation = std::move(operation)]() mutable {
    return resolveWith<T>(std::move(result), std::move(operation));
  });
}

}  // namespace detail

/// Starts `operation`, a function that makes a task, as a task of its own.
template <std::invocable Operation>
SpawnedTask<detail::TaskValueOf<Operation>> spawnTask(const TaskExecutor& executor, Operation operation) {
  using T = detail::TaskValueOf<Operation>;
  auto result = std::make_shared<PendingResult<T>>();
  TaskHandle handle = detail::startResolving<T>(executor, result, std::move(operation));
  return SpawnedTask<T>(std::move(handle), std::move(result));
}

}  // namespace quillo
