#include "QuilloCore/Concurrency/TerminationSignals.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <system_error>
#include <utility>

namespace quillo {

TerminationSignals::TerminationSignals(std::function<void()> onSignal)
    : onSignal_(std::move(onSignal)), endEvent_(eventfd(0, EFD_CLOEXEC)) {
  if (endEvent_ < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
  sigemptyset(&awaited_);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&awaited_, signal);
  pthread_sigmask(SIG_BLOCK, &awaited_, &previous_);
  thread_ = std::thread([this] { wait(); });
}

TerminationSignals::~TerminationSignals() {
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = write(endEvent_, &one, sizeof(one));
  thread_.join();
  close(endEvent_);
  pthread_sigmask(SIG_SETMASK, &previous_, nullptr);
}

void TerminationSignals::wait() {
  const int signals = signalfd(-1, &awaited_, SFD_CLOEXEC);
  std::array<pollfd, 2> events{{{signals, POLLIN, 0}, {endEvent_, POLLIN, 0}}};
  for (bool isFirst = true;;) {
    if (poll(events.data(), events.size(), -1) < 0 && errno == EINTR) continue;
    if (events[0].revents == 0) break;
    signalfd_siginfo received{};
    if (read(signals, &received, sizeof(received)) != sizeof(received)) break;
    if (!isFirst) {
      // Whoever asks twice does not want to wait for an orderly end.
      sigset_t one;
      sigemptyset(&one);
      sigaddset(&one, static_cast<int>(received.ssi_signo));
      pthread_sigmask(SIG_UNBLOCK, &one, nullptr);
      raise(static_cast<int>(received.ssi_signo));
    }
    isFirst = false;
    onSignal_();
  }
  close(signals);
}

}  // namespace quillo
