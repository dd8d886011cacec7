#pragma once

#include <QSocketNotifier>
#include <chrono>
#include <functional>
#include <memory>

#include "QuilloCore/Concurrency/TaskExecutor.h"

namespace quillo {

/// The application's event loop as a place where tasks run. Made and used on the thread of the application object; only
/// the executor may be used from elsewhere. Jobs take turns with the user's input: those that are there when a turn
/// begins run, those that they post wait for the next.
class MainLoop {
 public:
  MainLoop();
  MainLoop(const MainLoop&) = delete;
  MainLoop& operator=(const MainLoop&) = delete;
  /// Runs what has been posted and refuses more. Whoever started tasks has to have ended them before.
  ~MainLoop();

  TaskExecutor executor() const;

  /// Runs jobs, and nothing of the user's or the display's, until the condition holds: for the application's end, when
  /// its event loop has ended or must not go on. Returns false when the condition does not hold in time.
  bool runUntil(const std::function<bool()>& isDone, std::chrono::milliseconds limit);

 private:
  class Core;
  std::shared_ptr<Core> core_;
  QSocketNotifier notifier_;
};

}  // namespace quillo
