#include "RunningProgram.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <ostream>
#include <stdexcept>
#include <thread>

#include "Tests/Support/GoldenFile.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

/// Between fork and exec: nothing that allocates may run there, so the pointers are made before.
std::vector<char*> pointersTo(const Arguments& arguments) {
  std::vector<char*> pointers;
  for (const std::string& argument : arguments) pointers.push_back(const_cast<char*>(argument.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

void redirect(const char* path, int flags, int target) {
  constexpr mode_t ownerOnly = 0600;
  const int descriptor = ::open(path, flags, ownerOnly);
  if (descriptor < 0 || ::dup2(descriptor, target) < 0) ::_exit(127);
  ::close(descriptor);
}

int exitStatusOf(int status) {
  return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace

RunningProgram::RunningProgram(const Arguments& arguments) {
  const auto pointers = pointersTo(arguments);
  pid_ = ::fork();
  if (pid_ < 0) throw std::runtime_error("cannot start " + arguments.front());
  if (pid_ == 0) {
    ::setpgid(0, 0);
    redirect("/dev/null", O_RDWR, STDOUT_FILENO);
    redirect("/dev/null", O_RDWR, STDERR_FILENO);
    ::execvp(pointers[0], pointers.data());
    ::_exit(127);
  }
  ::setpgid(pid_, pid_);
}

RunningProgram::~RunningProgram() {
  ::kill(-pid_, SIGKILL);  // browsers are many processes
  if (!exitStatus_) ::waitpid(pid_, nullptr, 0);
}

void RunningProgram::signal(int number) const {
  ::kill(pid_, number);
}

std::optional<int> RunningProgram::exitStatus() {
  int status = 0;
  if (!exitStatus_ && ::waitpid(pid_, &status, WNOHANG) == pid_) exitStatus_ = exitStatusOf(status);
  return exitStatus_;
}

FinishedProgram runProgram(const Arguments& arguments, const std::string& input,
                           const std::vector<std::string>& environment) {
  const TemporaryDirectory folder;
  const std::string inputPath = folder.path() / "input";
  const std::string outputPath = folder.path() / "output";
  const std::string errorPath = folder.path() / "error";
  std::ofstream(inputPath, std::ios::binary) << input;
  const auto pointers = pointersTo(arguments);
  const auto started = std::chrono::steady_clock::now();
  const pid_t pid = ::fork();
  if (pid < 0) throw std::runtime_error("cannot start " + arguments.front());
  if (pid == 0) {
    redirect(inputPath.c_str(), O_RDONLY, STDIN_FILENO);
    redirect(outputPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
    redirect(errorPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
    for (const std::string& entry : environment) {
      const std::size_t equals = entry.find('=');
      if (equals == std::string::npos) {
        ::unsetenv(entry.c_str());
      } else {
        ::setenv(entry.substr(0, equals).c_str(), entry.c_str() + equals + 1, 1);
      }
    }
    ::execvp(pointers[0], pointers.data());
    ::_exit(127);
  }
  int status = 0;
  ::waitpid(pid, &status, 0);
  FinishedProgram finished;
  finished.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
  finished.exitStatus = exitStatusOf(status);
  finished.output = readFile(outputPath);
  finished.error = readFile(errorPath);
  return finished;
}

void PrintTo(const FinishedProgram& finished, std::ostream* stream) {
  *stream << "status " << finished.exitStatus << "\noutput: " << finished.output << "\nerror: " << finished.error;
}

FinishedProgram runQuillo(const Arguments& arguments, const std::string& input,
                          const std::vector<std::string>& environment) {
  Arguments all = {QUILLO_PROGRAM};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return runProgram(all, input, environment);
}

Arguments chromiumShowing(const std::string& url) {
  return {"chromium",
          "--no-sandbox",
          "--no-first-run",
          "--disable-gpu",
          "--disable-dev-shm-usage",
          "--password-store=basic",
          "--disable-background-networking",
          "--disable-component-update",
          "--disable-sync",
          "--user-data-dir=" + std::string(std::getenv("HOME")) + "/profile",
          url};
}

std::string clipboardText() {
  return runProgram({"xclip", "-selection", "clipboard", "-out"}).output;
}

bool eventually(const std::function<bool()>& condition, double seconds) {
  using namespace std::chrono_literals;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  while (std::chrono::steady_clock::now() < deadline) {
    if (condition()) return true;
    std::this_thread::sleep_for(50ms);
  }
  return false;
}

std::string writeFile(const std::string& name, const std::string& text) {
  const std::string path = std::string(std::getenv("HOME")) + "/" + name;
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

}  // namespace quillo::test
