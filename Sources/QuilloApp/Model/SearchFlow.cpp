#include "QuilloApp/Model/SearchFlow.h"

#include <algorithm>
#include <set>
#include <utility>

#include "QuilloApp/Model/FailureText.h"
#include "QuilloCore/Artifacts/ArtifactRepository.h"
#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Support/LetterCase.h"

namespace quillo {

using State = QuilloModelState;

/// An artifact whose captured text is searched.
struct SearchFlow::Candidate {
  UUID id;
  std::string searchable;                   ///< what its manifest says
  std::shared_ptr<const std::string> text;  ///< lower-cased; null when it is still as read
  std::string read;
};

struct SearchFlow::Finding {
  std::vector<UUID> matches;
  std::vector<std::pair<UUID, std::shared_ptr<const std::string>>> texts;  ///< those that were lower-cased for it
};

SearchFlow::SearchFlow(ModelContext& context) : context_(context), worker_(context.services.makeWorkerExecutor()) {
  observation_ = context_.state.observe([this](QuilloModelChanges changes) {
    if (!changes.contains(QuilloModelField::artifacts)) return;
    forgetTextsOfMissing();
    if (!words_.isEmpty()) searchTexts();
  });
}

void SearchFlow::setQuery(std::string query) {
  SearchWords words(query);
  context_.state.set<&State::searchQuery>(std::move(query));
  if (words == words_) return;
  words_ = std::move(words);
  found_.clear();
  searchTexts();
}

void SearchFlow::setApplicationFilter(std::optional<std::string> application) {
  context_.state.set<&State::applicationFilter>(std::move(application));
}

const std::vector<std::string>& SearchFlow::searchableTexts() const {
  const std::uint64_t revision = context_.state.artifactsRevision();
  if (searchableRevision_ != revision) {
    searchable_.clear();
    for (const StoredArtifact& artifact : context_.state->artifacts)
      searchable_.push_back(searchableText(artifact.manifest));
    searchableRevision_ = revision;
  }
  return searchable_;
}

std::vector<std::size_t> SearchFlow::matching() const {
  const auto& artifacts = context_.state->artifacts;
  const auto& inTexts = context_.state->capturedTextSearch.matches;
  std::vector<std::size_t> indices;
  indices.reserve(artifacts.size());
  for (std::size_t i = 0; i < artifacts.size(); ++i) {
    const bool isFound = words_.isEmpty() || words_.occurIn(searchableTexts()[i]) ||
                         std::ranges::binary_search(inTexts, artifacts[i].manifest.id);
    if (isFound) indices.push_back(i);
  }
  return indices;
}

std::vector<std::size_t> SearchFlow::shown() const {
  return ofApplication(context_.state->artifacts, matching(), context_.state->applicationFilter);
}

void SearchFlow::searchTexts() {
  running_.cancel();
  ++generation_;
  if (words_.isEmpty()) return tell(false);
  tell(true);
  running_ = context_.tasks.start([this, generation = generation_] { return run(words_, generation); });
}

Task<> SearchFlow::run(SearchWords words, std::uint64_t generation) {
  std::vector<Candidate> known;
  std::vector<Candidate> unread;
  const auto& artifacts = context_.state->artifacts;
  for (std::size_t i = 0; i < artifacts.size(); ++i) {
    const std::string& searchable = searchableTexts()[i];
    if (words.occurIn(searchable)) continue;
    const UUID& id = artifacts[i].manifest.id;
    const auto text = texts_.find(id);
    if (text != texts_.end()) {
      known.push_back({id, searchable, text->second, {}});
    } else {
      unread.push_back({id, searchable, nullptr, {}});
    }
  }
  std::vector<UUID> found;
  std::uint64_t toldAt = 0;
  for (std::size_t next = 0;; next += textsPerReading) {
    Task<Finding> examining = examine(std::exchange(known, {}), words);
    const Finding finding = co_await std::move(examining);
    if (generation != generation_) co_return;
    for (const auto& [id, text] : finding.texts) {
      if (textByteCount_ + text->size() > keptTextByteLimit || !texts_.emplace(id, text).second) continue;
      textByteCount_ += text->size();
    }
    found.insert(found.end(), finding.matches.begin(), finding.matches.end());
    const bool isFirst = next == 0;
    const std::uint64_t now = context_.services.clock.uptimeNanoseconds();
    if (isFirst || next >= unread.size() || now - toldAt >= nanosecondsBetweenNews) {
      found_ = found;
      std::ranges::sort(found_);
      toldAt = now;
      tell(next < unread.size());
    }
    if (next >= unread.size()) co_return;

    const auto begin = unread.begin() + static_cast<std::ptrdiff_t>(next);
    const auto end = unread.begin() + static_cast<std::ptrdiff_t>(std::min(next + textsPerReading, unread.size()));
    known.assign(std::make_move_iterator(begin), std::make_move_iterator(end));
    std::vector<UUID> ids;
    ids.reserve(known.size());
    for (const Candidate& candidate : known) ids.push_back(candidate.id);
    Task<Outcome<std::vector<std::string>>> reading =
        outcomeOf(context_.services.repository.contextTexts(std::move(ids)));
    Outcome<std::vector<std::string>> texts = co_await std::move(reading);
    if (generation != generation_) co_return;
    if (!texts) {
      // The library cannot be read at all; that it cannot is the listing's to say.
      rethrowCancellation(texts.error());
      co_return tell(false);
    }
    for (std::size_t i = 0; i < known.size(); ++i) known[i].read = std::move((*texts)[i]);
  }
}

Task<SearchFlow::Finding> SearchFlow::examine(std::vector<Candidate> candidates, SearchWords words) {
  auto work = [candidates = std::move(candidates), words = std::move(words)] { return findIn(candidates, words); };
  const auto examining = spawnTask(worker_, std::move(work));
  Task<Finding> waiting = examining.value();
  co_return co_await std::move(waiting);
}

Task<SearchFlow::Finding> SearchFlow::findIn(std::vector<Candidate> candidates, SearchWords words) {
  Finding finding;
  for (Candidate& candidate : candidates) {
    if (!candidate.text) {
      candidate.text = std::make_shared<const std::string>(lowercased(candidate.read));
      finding.texts.emplace_back(candidate.id, candidate.text);
    }
    if (words.occurIn(candidate.searchable, *candidate.text)) finding.matches.push_back(candidate.id);
  }
  co_return finding;
}

void SearchFlow::tell(bool isRunning) {
  context_.state.set<&State::capturedTextSearch>(CapturedTextSearch{found_, isRunning});
}

void SearchFlow::forgetTextsOfMissing() {
  std::set<UUID> present;
  for (const StoredArtifact& artifact : context_.state->artifacts) present.insert(artifact.manifest.id);
  std::erase_if(texts_, [&](const auto& entry) {
    if (present.contains(entry.first)) return false;
    textByteCount_ -= entry.second->size();
    return true;
  });
}

}  // namespace quillo
