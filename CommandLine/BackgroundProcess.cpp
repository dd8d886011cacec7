#include "BackgroundProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <system_error>

#include "QuilloCore/Concurrency/TerminationSignals.h"

namespace quillo {
namespace {

[[noreturn]] void failBecauseOf(const char* call) {
  throw std::system_error(errno, std::generic_category(), call);
}

/// Until the other side has written or has closed the pipe; nothing in the second case.
std::optional<int> readStatus(int pipe) {
  int status = 0;
  ssize_t size = 0;
  do {
    size = read(pipe, &status, sizeof(status));
  } while (size < 0 && errno == EINTR);
  return size == sizeof(status) ? std::optional(status) : std::nullopt;
}

int awaitEnd(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) continue;
  constexpr int signalledBase = 128;
  return WIFSIGNALED(status) ? signalledBase + WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace

CommandResult BackgroundProcess::run(const std::function<CommandResult(BackgroundProcess&)>& work) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) failBecauseOf("pipe");
  const pid_t process = fork();
  if (process < 0) failBecauseOf("fork");
  if (process == 0) {
    close(ends[0]);
    setsid();  // the terminal's Control-C is the caller's to pass on
    BackgroundProcess background(ends[1]);
    return work(background);
  }
  close(ends[1]);
  const TerminationSignals signals([process] { kill(process, SIGTERM); });
  const std::optional<int> released = readStatus(ends[0]);
  close(ends[0]);
  return {.output = std::nullopt, .exitStatus = released ? *released : awaitEnd(process)};
}

void BackgroundProcess::release(const CommandResult& result) {
  if (result.output) printOutput(*result.output + "\n");
  std::fflush(nullptr);
  const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, stream);
  close(nowhere);
  [[maybe_unused]] const int changed = chdir("/");  // holds up no unmounting
  [[maybe_unused]] const auto written = write(pipe_, &result.exitStatus, sizeof(result.exitStatus));
  close(pipe_);
  pipe_ = -1;
}

}  // namespace quillo
