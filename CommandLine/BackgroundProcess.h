#pragma once

#include <functional>

#include "CommandResult.h"

namespace quillo {

/// A command that has to outlive its call, because what it put on the clipboard is there only as long as it runs. Its
/// work is done in a process of its own from the start (threads and connections cannot be taken along later); whoever
/// called the program gets back to work as soon as the command lets them go.
class BackgroundProcess {
 public:
  /// Called twice, in effect. In the new process it does the work and returns its result; in the calling one it
  /// returns, without output, once the work has released it or has ended, with that status. A request to end that
  /// arrives before is passed on. To be called before there is any thread.
  static CommandResult run(const std::function<CommandResult(BackgroundProcess&)>& work);

  /// Prints the result and lets the caller go on with its status. From then on the process belongs to no terminal.
  void release(const CommandResult& result);

 private:
  explicit BackgroundProcess(int pipe) : pipe_(pipe) {}

  int pipe_;
};

}  // namespace quillo
