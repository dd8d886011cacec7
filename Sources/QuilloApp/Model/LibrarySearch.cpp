#include "QuilloApp/Model/LibrarySearch.h"

#include <algorithm>
#include <map>
#include <utility>

#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {

SearchWords::SearchWords(std::string_view query) {
  const std::string sought = lowercased(query);
  for (const std::string_view word : splittingAtWhiteSpace(sought)) words_.emplace_back(word);
}

bool SearchWords::occurIn(std::string_view text, std::string_view otherText) const {
  return std::ranges::all_of(words_,
                             [&](const std::string& word) { return text.contains(word) || otherText.contains(word); });
}

std::string searchableText(const ArtifactManifest& manifest) {
  // A line break keeps a word from matching across two fields.
  std::string text = manifest.title + '\n' + manifest.annotations + '\n' + manifest.source.applicationName + '\n' +
                     manifest.source.windowTitle;
  for (const std::string& tag : manifest.tags) text += '\n' + tag;
  return lowercased(text);
}

bool matchesSearch(const ArtifactManifest& manifest, std::string_view query) {
  const SearchWords words(query);
  return words.isEmpty() || words.occurIn(searchableText(manifest));
}

std::vector<ApplicationCount> countApplications(const std::vector<StoredArtifact>& artifacts,
                                                const std::vector<std::size_t>& indices) {
  std::map<std::string_view, std::size_t> counts;
  for (const std::size_t index : indices) ++counts[artifacts[index].manifest.source.applicationName];
  std::vector<std::pair<std::string, ApplicationCount>> ordered;
  ordered.reserve(counts.size());
  for (const auto& [name, count] : counts) ordered.push_back({lowercased(name), {std::string(name), count}});
  std::ranges::stable_sort(ordered, {}, [](const auto& each) -> const std::string& { return each.first; });
  std::vector<ApplicationCount> result;
  result.reserve(ordered.size());
  for (auto& each : ordered) result.push_back(std::move(each.second));
  return result;
}

std::vector<std::size_t> ofApplication(const std::vector<StoredArtifact>& artifacts, std::vector<std::size_t> indices,
                                       const std::optional<std::string>& application) {
  if (application) {
    std::erase_if(indices,
                  [&](std::size_t index) { return artifacts[index].manifest.source.applicationName != *application; });
  }
  return indices;
}

}  // namespace quillo
