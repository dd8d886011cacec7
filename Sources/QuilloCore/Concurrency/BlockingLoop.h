#pragma once

#include <concepts>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "QuilloCore/Concurrency/TaskExecutor.h"

namespace quillo {

/// Runs a task to its end on the thread that calls, for programs without an event loop.
class BlockingLoop {
 public:
  BlockingLoop();
  BlockingLoop(const BlockingLoop&) = delete;
  BlockingLoop& operator=(const BlockingLoop&) = delete;
  ~BlockingLoop();

  /// For further tasks that run on the loop's thread, while it runs.
  TaskExecutor executor() const;

  /// Runs the task that `operation` makes; returns its value or throws its error. One at a time.
  template <std::invocable Operation>
  detail::TaskValueOf<Operation> run(Operation operation) {
    using T = detail::TaskValueOf<Operation>;
    auto result = std::make_shared<PendingResult<T>>();
    begin(detail::startResolving<T>(executor(), result, std::move(operation)));
    result->whenResolved([this] { finish(); });
    runJobs();
    return result->take();
  }

  /// Cancels the task that runs, and all that are run later. From any thread, but not from a signal handler.
  void cancel();

 private:
  class Core;

  void begin(TaskHandle task);
  void finish();
  void runJobs();

  std::shared_ptr<Core> core_;
  std::mutex lock_;
  TaskHandle task_;
  bool isCancelled_ = false;
};

/// As `BlockingLoop::run`, for once.
template <std::invocable Operation>
detail::TaskValueOf<Operation> runBlocking(Operation operation) {
  BlockingLoop loop;
  return loop.run(std::move(operation));
}

}  // namespace quillo
