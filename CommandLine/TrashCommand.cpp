#include <algorithm>
#include <filesystem>

#include "Commands.h"

namespace quillo {

CommandResult runTrash(const TrashOptions& options, CommandLibrary& library) {
  std::vector<std::filesystem::path> done;
  std::size_t failureCount = 0;
  for (const std::string& artifact : options.artifacts) {
    try {
      const NamedBundle bundle = library.find(artifact);
      const auto newPath = library.store().moveBundleToTrash(bundle.path, bundle.id);
      done.push_back(bundle.path);
      // At once, so that the user knows where the bundles are whatever happens to the others.
      if (newPath) printOutput(newPath->string() + "\n");
    } catch (const StreamError&) {
      throw;
    } catch (const std::exception& error) {
      printError(error);
      ++failureCount;
    }
  }
  if (failureCount == 0) return {std::nullopt};
  return {std::nullopt, done.empty() ? ExitStatus::failed : ExitStatus::doneInPart};
}

}  // namespace quillo
