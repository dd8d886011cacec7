#include "Tests/Support/ProgramRun.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <ostream>
#include <stdexcept>

#include "Tests/Support/GoldenFile.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

[[noreturn]] void becomeProgram(const std::string& program, const std::vector<std::string>& arguments,
                                const std::filesystem::path& folder,
                                const std::vector<std::pair<std::string, std::string>>& environment) {
  constexpr int newFlags = O_WRONLY | O_CREAT | O_TRUNC;
  ::dup2(::open((folder / "in").c_str(), O_RDONLY), STDIN_FILENO);
  ::dup2(::open((folder / "out").c_str(), newFlags, 0600), STDOUT_FILENO);
  ::dup2(::open((folder / "err").c_str(), newFlags, 0600), STDERR_FILENO);
  for (const auto& [name, value] : environment) ::setenv(name.c_str(), value.c_str(), 1);
  std::vector<char*> argumentPointers = {const_cast<char*>(program.c_str())};
  for (const auto& argument : arguments) argumentPointers.push_back(const_cast<char*>(argument.c_str()));
  argumentPointers.push_back(nullptr);
  ::execv(program.c_str(), argumentPointers.data());
  std::_Exit(127);
}

}  // namespace

ProgramRun runProgram(const std::string& program, const std::vector<std::string>& arguments, const std::string& input,
                      const std::vector<std::pair<std::string, std::string>>& environment) {
  const TemporaryDirectory folder;
  writeFile(folder.path() / "in", input);
  const pid_t child = ::fork();
  if (child < 0) throw std::runtime_error("cannot fork");
  if (child == 0) becomeProgram(program, arguments, folder.path(), environment);
  int status = 0;
  ::waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), readFile(folder.path() / "out"),
          readFile(folder.path() / "err")};
}

void PrintTo(const ProgramRun& run, std::ostream* stream) {
  *stream << "status " << run.exitStatus << "\noutput: " << run.output << "\nerror: " << run.error;
}

}  // namespace quillo::test
