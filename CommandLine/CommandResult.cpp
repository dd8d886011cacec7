#include "CommandResult.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <new>
#include <optional>
#include <system_error>
#include <utility>

#include "QuilloCore/Capture/ContextCaptureServiceError.h"
#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"
#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

std::string reasonOf(int errorNumber) {
  return std::generic_category().message(errorNumber);
}

std::optional<std::string> recoverySuggestionOf(const std::exception& error) {
  if (const auto* service = dynamic_cast<const ContextCaptureServiceError*>(&error)) {
    return service->recoverySuggestion();
  }
  if (const auto* screenshot = dynamic_cast<const WindowScreenshotCaptureError*>(&error)) {
    return screenshot->recoverySuggestion();
  }
  return std::nullopt;
}

class Descriptor {
 public:
  explicit Descriptor(const std::string& path)
      : descriptor_(path == "-" ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (descriptor_ > STDIN_FILENO) ::close(descriptor_);
  }
  int get() const { return descriptor_; }

 private:
  int descriptor_;
};

/// What cannot be told, because standard error is closed, is no further error.
void printErrorLine(const std::string& line) {
  std::fputs((line + "\n").c_str(), stderr);
}

}  // namespace

StreamError::StreamError(std::string name, std::string reason)
    : description_(fmt::format("{}: {}", std::move(name), std::move(reason))) {}

void printOutput(const std::string& text) {
  std::size_t written = 0;
  while (written < text.size()) {
    const ssize_t count = ::write(STDOUT_FILENO, text.data() + written, text.size() - written);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw StreamError("The output could not be written", reasonOf(errno));
    written += static_cast<std::size_t>(count);
  }
}

void printError(const std::string& message) {
  printErrorLine("quillo: " + bringingToOneLine(replacingInvalidUtf8(message)));
}

void printError(const std::exception& error) {
  const bool lacksMemory = dynamic_cast<const std::bad_alloc*>(&error) != nullptr;
  printError(lacksMemory ? "There is not enough memory." : std::string(error.what()));
  if (const auto suggestion = recoverySuggestionOf(error)) printErrorLine(*suggestion);
}

std::string readInput(const std::string& path) {
  const std::string name = path == "-" ? "Standard input" : path;
  const Descriptor input(path);
  if (input.get() < 0) throw StreamError(name, reasonOf(errno));
  std::string text;
  std::array<char, 65536> buffer{};
  while (true) {
    const ssize_t count = ::read(input.get(), buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw StreamError(name, reasonOf(errno));
    if (count == 0) return text;
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

}  // namespace quillo
