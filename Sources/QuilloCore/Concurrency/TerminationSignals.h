#pragma once

#include <csignal>
#include <functional>
#include <thread>

namespace quillo {

/// Turns the requests to end the program (SIGINT, SIGTERM, SIGHUP) into calls of a function, on a thread of its own. To
/// be made before any other thread, because those inherit that the signals wait. A second signal ends the program at
/// once, in the default way.
class TerminationSignals {
 public:
  explicit TerminationSignals(std::function<void()> onSignal);
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;
  ~TerminationSignals();

 private:
  void wait();

  std::function<void()> onSignal_;
  sigset_t awaited_{};
  sigset_t previous_{};
  int endEvent_;
  std::thread thread_;
};

}  // namespace quillo
