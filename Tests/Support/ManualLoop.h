#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <stdexcept>
#include <utility>

#include "QuilloCore/Concurrency/JobQueue.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "QuilloCore/Concurrency/TaskExecutor.h"

namespace quillo::test {

/// An event loop that runs on the test's thread, when the test says so.
class ManualLoop {
 public:
  ManualLoop();
  ManualLoop(const ManualLoop&) = delete;
  ManualLoop& operator=(const ManualLoop&) = delete;
  /// Runs what is left, so that nothing stays parked.
  ~ManualLoop();

  TaskExecutor executor() const;

  /// Runs jobs until none is left.
  void runReady();

  /// Runs the next job; false when none has come in that time.
  bool runOne(std::chrono::milliseconds patience);

  /// Runs jobs, also those that other threads have yet to post, until the condition holds. Returns whether it does; it
  /// gives up after ten seconds without a job.
  bool runUntil(const std::function<bool()>& condition);

  /// Runs the task to its end; returns its value or throws its error.
  template <class T>
  T run(Task<T> task) {
    auto outcome = std::make_shared<PendingResult<T>>();
    detail::startResolving<T>(executor(), outcome,
                              [task = std::make_shared<Task<T>>(std::move(task))] { return std::move(*task); });
    if (!runUntil([&] { return outcome->isResolved(); })) throw std::runtime_error("the task does not end");
    return outcome->take();
  }

 private:
  class Core;
  std::shared_ptr<Core> core_;
};

}  // namespace quillo::test
