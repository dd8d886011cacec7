#pragma once

#include <memory>

#include "QuilloCore/Concurrency/TaskExecutor.h"

namespace quillo {

/// Threads for independent tasks. A job that finds no idle thread gets a new one (up to a bound that is far above what
/// is ever used), so that a task that blocks its thread holds up no other. The pool's end runs what has been posted and
/// waits for its threads; tasks that are still parked then are never resumed.
class WorkerPool {
 public:
  WorkerPool();
  WorkerPool(const WorkerPool&) = delete;
  WorkerPool& operator=(const WorkerPool&) = delete;
  ~WorkerPool();

  /// A new queue whose jobs run one at a time, on any of the threads: for one task and what it awaits.
  TaskExecutor makeExecutor();

 private:
  class Core;
  class Lane;
  std::shared_ptr<Core> core_;
};

}  // namespace quillo
