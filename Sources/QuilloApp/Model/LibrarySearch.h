#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Artifacts/ArtifactManifest.h"
#include "QuilloCore/Artifacts/ArtifactModels.h"

namespace quillo {

/// The words that a search looks for. Letter case does not count, nor does their order.
class SearchWords {
 public:
  SearchWords() = default;
  explicit SearchWords(std::string_view query);

  /// An empty search finds everything.
  bool isEmpty() const { return words_.empty(); }

  /// Whether every word occurs in one of the two lower-cased texts.
  bool occurIn(std::string_view text, std::string_view otherText = {}) const;

  friend bool operator==(const SearchWords&, const SearchWords&) = default;

 private:
  std::vector<std::string> words_;
};

/// What a search looks through at once, lower-cased: the title, the note, the tags, the application's name and the
/// window's title. The captured text comes beside it.
std::string searchableText(const ArtifactManifest& manifest);

/// Whether every word of the query occurs in that.
bool matchesSearch(const ArtifactManifest& manifest, std::string_view query);

/// An application, and how many captures there are of it.
struct ApplicationCount {
  std::string name;
  std::size_t count = 0;

  friend bool operator==(const ApplicationCount&, const ApplicationCount&) = default;
};

/// The applications of these artifacts (indices into the library), in the order of their names.
std::vector<ApplicationCount> countApplications(const std::vector<StoredArtifact>& artifacts,
                                                const std::vector<std::size_t>& indices);

/// Those of the indices whose artifact is of the application; all of them when none is named.
std::vector<std::size_t> ofApplication(const std::vector<StoredArtifact>& artifacts, std::vector<std::size_t> indices,
                                       const std::optional<std::string>& application);

}  // namespace quillo
