#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "Commands.h"

namespace quillo {

void runApp(const AppOptions& options, const std::optional<std::string>& libraryDirectory) {
  // A program of its own, so that the command loads no toolkit; it stands beside this one.
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe").replace_filename("quillo-app");
  std::vector<std::string> words{program.string()};
  if (options.runsInBackground) words.emplace_back("--background");
  if (libraryDirectory) words.push_back("--library=" + *libraryDirectory);
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  ::execv(program.c_str(), arguments.data());
  throw std::system_error(errno, std::generic_category(), "The application could not be started (" + words[0] + ")");
}

}  // namespace quillo
