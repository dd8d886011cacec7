#pragma once

#include <concepts>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Concurrency/TaskExecutor.h"

namespace quillo {

/// The tasks that one owner has started, all on one executor, so that the owner can see them end before it does. Used
/// on that executor's thread only.
class TaskGroup {
 public:
  explicit TaskGroup(TaskExecutor executor);

  const TaskExecutor& executor() const { return executor_; }

  /// As `startTask`.
  TaskHandle start(std::move_only_function<Task<>()> body);

  /// As `spawnTask`.
  template <std::invocable Operation>
  SpawnedTask<detail::TaskValueOf<Operation>> spawn(Operation operation) {
    using T = detail::TaskValueOf<Operation>;
    auto result = std::make_shared<PendingResult<T>>();
    TaskHandle handle = start([result, operation = std::move(operation)]() mutable {
      return detail::resolveWith<T>(std::move(result), std::move(operation));
    });
    return SpawnedTask<T>(std::move(handle), std::move(result));
  }

  bool isEmpty() const;

  void cancelAll();

  /// Waits until no task of the group is left, those included that are started meanwhile. A task of the group must not
  /// wait for it.
  Task<> whenEmpty();

 private:
  struct State;
  class Membership;
  static Task<> runMember(std::shared_ptr<State> state, std::uint64_t number, std::move_only_function<Task<>()> body);

  TaskExecutor executor_;
  std::shared_ptr<State> state_;
};

}  // namespace quillo
