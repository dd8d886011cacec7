#pragma once

#include <concepts>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>

#include "QuilloCore/Concurrency/JobQueue.h"
#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Concurrency/TaskExecutor.h"

namespace quillo {

/// One thread and the jobs that wait for it. Its end runs what has been posted so far, in order, and then waits for the
/// thread; so it must not end on its own thread.
class SerialQueue {
 public:
  /// The label names the queue in a debugger (the system shows its last 15 bytes).
  explicit SerialQueue(std::string label);
  SerialQueue(const SerialQueue&) = delete;
  SerialQueue& operator=(const SerialQueue&) = delete;
  ~SerialQueue();

  const std::string& label() const { return label_; }

  /// From any thread. The job must not throw.
  void post(Job job);

  /// For tasks that run on this queue's thread.
  TaskExecutor executor() const;

  /// Runs a synchronous function on this queue and waits for what it returns or throws. A cancelled waiter is released
  /// at once: a function that has begun runs to its end, one that has not is dropped.
  template <std::invocable Function>
  Task<std::invoke_result_t<Function&>> run(Function function) {
    auto result = std::make_shared<PendingResult<std::invoke_result_t<Function&>>>();
    post([result, function = std::move(function)]() mutable {
      if (!result->isResolved()) result->resolve(outcomeOfCall(function));
    });
    return waitFor(std::move(result));
  }

 private:
  class Core;

  std::string label_;
  std::shared_ptr<Core> core_;
  std::thread thread_;
};

}  // namespace quillo
