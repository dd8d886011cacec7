#include "QuilloApp/Model/LibrarySearch.h"

#include <algorithm>
#include <string>

#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {

bool matchesSearch(const ArtifactManifest& manifest, std::string_view query) {
  const std::string sought = lowercased(query);
  const auto words = splittingAtWhiteSpace(sought);
  if (words.empty()) return true;
  // A line break keeps a word from matching across two fields.
  std::string text = manifest.title + '\n' + manifest.annotations + '\n' + manifest.source.applicationName + '\n' +
                     manifest.source.windowTitle;
  for (const std::string& tag : manifest.tags) text += '\n' + tag;
  text = lowercased(text);
  return std::ranges::all_of(words, [&](std::string_view word) { return text.contains(word); });
}

}  // namespace quillo
