#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "QuilloApp/Model/LibrarySearch.h"
#include "QuilloApp/Model/ModelContext.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// What of the library is shown: the search and the application filter.
///
/// What the manifests say is searched at once. The captured texts are read and searched on other threads, the newest
/// first, and what they add is told as it is found. They stay in memory for the next keystroke as far as the budget
/// reaches.
class SearchFlow {
 public:
  static constexpr std::size_t keptTextByteLimit = std::size_t{64} * 1024 * 1024;
  static constexpr std::size_t textsPerReading = 32;  ///< so that opening a capture does not wait for a search
  static constexpr std::uint64_t nanosecondsBetweenNews = 150'000'000;  ///< while texts are read

  explicit SearchFlow(ModelContext& context);

  void setQuery(std::string query);
  void setApplicationFilter(std::optional<std::string> application);

  /// Indices into the library, in its order: of all that match the search, and of those the filter leaves.
  std::vector<std::size_t> matching() const;
  std::vector<std::size_t> shown() const;

 private:
  struct Candidate;
  struct Finding;

  void searchTexts();
  Task<> run(SearchWords words, std::uint64_t generation);
  Task<Finding> examine(std::vector<Candidate> candidates, SearchWords words);
  static Task<Finding> findIn(std::vector<Candidate> candidates, SearchWords words);
  void tell(bool isRunning);
  const std::vector<std::string>& searchableTexts() const;
  void forgetTextsOfMissing();

  ModelContext& context_;
  TaskExecutor worker_;
  SearchWords words_;
  mutable std::vector<std::string> searchable_;
  mutable std::optional<std::uint64_t> searchableRevision_;

  std::map<UUID, std::shared_ptr<const std::string>> texts_;  // lower-cased
  std::size_t textByteCount_ = 0;
  std::vector<UUID> found_;
  std::uint64_t generation_ = 0;
  TaskHandle running_;
  QuilloModelObservation observation_;
};

}  // namespace quillo
