#pragma once

#include <sys/types.h>

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace quillo::test {

using Arguments = std::vector<std::string>;

/// A program that a test started; it is ended with the test, also when it is stopped.
class RunningProgram {
 public:
  explicit RunningProgram(const Arguments& arguments);
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;
  ~RunningProgram();

  pid_t pid() const { return pid_; }
  void signal(int number) const;

  /// 128 and the signal when a signal ended it; nothing while it runs.
  std::optional<int> exitStatus();

 private:
  pid_t pid_;
  std::optional<int> exitStatus_;
};

/// What a program that ran to its end left.
struct FinishedProgram {
  int exitStatus = 0;  ///< 128 and the signal when a signal ended it
  std::string output;
  std::string error;
  double seconds = 0;

  /// Whether both left the same; how long they took is no matter.
  friend bool operator==(const FinishedProgram& a, const FinishedProgram& b) {
    return std::tie(a.exitStatus, a.output, a.error) == std::tie(b.exitStatus, b.output, b.error);
  }
};

void PrintTo(const FinishedProgram& finished, std::ostream* stream);

/// Runs a program to its end. `environment` entries ("NAME=value", or "NAME" to unset) change the test's own.
FinishedProgram runProgram(const Arguments& arguments, const std::string& input = {},
                           const std::vector<std::string>& environment = {});

/// The `quillo` command of this build.
FinishedProgram runQuillo(const Arguments& arguments, const std::string& input = {},
                          const std::vector<std::string>& environment = {});

/// The command line of a browser, with a profile of its own, that shows the page.
Arguments chromiumShowing(const std::string& url);

/// The text that is on the clipboard.
std::string clipboardText();

/// Looks until the condition holds; false when it did not within the seconds.
bool eventually(const std::function<bool()>& condition, double seconds = 15);

/// Writes a file into the desktop's home and gives its path.
std::string writeFile(const std::string& name, const std::string& text);

}  // namespace quillo::test
