#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "Commands.h"
#include "OutputText.h"
#include "QuilloCore/Support/Utf8.h"

namespace quillo {
namespace {

/// The bundles that the user has named, in the order in which the library has them; those elsewhere come last.
std::vector<NamedBundle> findAll(const std::vector<std::string>& artifacts, CommandLibrary& library) {
  std::vector<NamedBundle> named;
  for (const std::string& artifact : artifacts) {
    NamedBundle bundle = library.find(artifact);
    if (std::ranges::find(named, bundle) == named.end()) named.push_back(std::move(bundle));
  }
  std::vector<NamedBundle> ordered;
  for (NamedBundle& bundle : library.bundles()) {
    if (std::erase(named, bundle) > 0) ordered.push_back(std::move(bundle));
  }
  ordered.insert(ordered.end(), named.begin(), named.end());
  return ordered;
}

void showProgress(std::size_t doneCount, std::size_t count) {
  if (::isatty(STDERR_FILENO) == 0) return;
  if (doneCount < count) {
    fmt::print(stderr, "\r{} of {}", doneCount, count);
  } else {
    fmt::print(stderr, "\r\x1b[K");
  }
}

}  // namespace

CommandResult runCheck(const CheckOptions& options, CommandLibrary& library) {
  const std::vector<NamedBundle> bundles =
      options.artifacts.empty() ? library.bundles() : findAll(options.artifacts, library);
  CommandResult result;
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < bundles.size(); ++i) {
    showProgress(i, bundles.size());
    std::string finding = "ok";
    try {
      library.store().loadBundle(bundles[i].path);
    } catch (const std::exception& error) {
      finding = error.what();
      result.exitStatus = ExitStatus::doneInPart;
    }
    lines.push_back(showingBreaksAsBlanks(replacingInvalidUtf8(bundles[i].label())) + "\t" +
                    showingBreaksAsBlanks(replacingInvalidUtf8(finding)));
  }
  showProgress(bundles.size(), bundles.size());
  result.output = joiningLines(lines);
  return result;
}

}  // namespace quillo
