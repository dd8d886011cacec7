#pragma once

#include <exception>
#include <optional>
#include <string>

namespace quillo {

/// How the program ends.
namespace ExitStatus {
inline constexpr int done = 0;
inline constexpr int failed = 1;
inline constexpr int wrongCommandLine = 2;
inline constexpr int doneInPart = 3;
inline constexpr int interrupted = 130;
}  // namespace ExitStatus

/// What a command has to say: its output, printed with a line feed behind it (nothing at all when there is none), and
/// the status to end with.
struct CommandResult {
  std::optional<std::string> output = std::nullopt;
  int exitStatus = ExitStatus::done;
};

/// Writes to standard output. Throws StreamError when it cannot all be written (a full disk, a closed pipe).
void printOutput(const std::string& text);

/// "quillo: " and the message on one line of standard error, and a recovery suggestion on a second one.
void printError(const std::exception& error);
void printError(const std::string& message);

/// Everything of a file, or of standard input for "-". Throws StreamError.
std::string readInput(const std::string& path);

/// A file or a stream that could not be read or written.
class StreamError : public std::exception {
 public:
  StreamError(std::string name, std::string reason);

  const std::string& errorDescription() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  std::string description_;
};

}  // namespace quillo
