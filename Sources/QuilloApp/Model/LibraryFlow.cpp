#include "QuilloApp/Model/LibraryFlow.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "QuilloApp/Model/FailureText.h"
#include "QuilloCore/Artifacts/ArtifactRepository.h"

namespace quillo {

using State = QuilloModelState;

LibraryFlow::LibraryFlow(ModelContext& context, LoadedArtifactCache& cache, EditingFlow& editing,
                         const SearchFlow& search)
    : context_(context), cache_(cache), editing_(editing), search_(search) {}

Task<> LibraryFlow::start() {
  context_.activity.beginQuietly(Activity::Kind::loading);
  Task<Outcome<LibraryListing>> opening =
      outcomeOf(context_.services.repository.prepareAndSurvey(ListingDetail::withoutContextTexts));
  Outcome<LibraryListing> listed = co_await std::move(opening);
  context_.activity.end(Activity::Kind::loading);
  applyListing(std::move(listed));
}

Task<> LibraryFlow::reload() {
  context_.activity.beginQuietly(Activity::Kind::loading);
  Task<Outcome<LibraryListing>> surveying = survey();
  Outcome<LibraryListing> listed = co_await std::move(surveying);
  context_.activity.end(Activity::Kind::loading);
  applyListing(std::move(listed));
}

Task<Outcome<LibraryListing>> LibraryFlow::survey() {
  Task<Outcome<LibraryListing>> listing =
      outcomeOf(context_.services.repository.survey(ListingDetail::withoutContextTexts));
  co_return co_await std::move(listing);
}

void LibraryFlow::showListingFailure(const std::exception_ptr& error) {
  rethrowCancellation(error);
  LibraryCondition condition = context_.state->libraryCondition;
  condition.listingFailure = failureText(error);
  context_.activity.showFailure(*condition.listingFailure);
  context_.state.set<&State::libraryCondition>(std::move(condition));
}

void LibraryFlow::libraryChanged() {
  hasMoreChanges_ = true;
  if (isFollowingChanges_) return;
  isFollowingChanges_ = true;
  context_.tasks.start([this] { return followChanges(); });
}

Task<> LibraryFlow::followChanges() {
  // What changes while the library is being read is read again, once.
  while (std::exchange(hasMoreChanges_, false)) {
    Task<Outcome<LibraryListing>> surveying = survey();
    Outcome<LibraryListing> listed = co_await std::move(surveying);
    applyListing(std::move(listed));
  }
  isFollowingChanges_ = false;
}

void LibraryFlow::applyListing(Outcome<LibraryListing> outcome) {
  if (!outcome) return showListingFailure(outcome.error());
  PublishedModelState& state = context_.state;
  std::vector<StoredArtifact>& artifacts = outcome->artifacts;
  const std::vector<DamagedBundle>& damagedBundles = outcome->damagedBundles;
  const auto listed = [&](const UUID& id) {
    return std::ranges::find(artifacts, id, [](const StoredArtifact& each) { return each.manifest.id; });
  };
  const auto isOutdated = [&](const OpenArtifact& open) {
    const auto found = listed(open.id());
    return found == artifacts.end() || !holdSameEdits(found->manifest, open.stored.manifest);
  };
  cache_.removeIf(isOutdated);
  const bool isThere = !state->selection || listed(*state->selection) != artifacts.end() ||
                       std::ranges::find(damagedBundles, *state->selection, &DamagedBundle::id) != damagedBundles.end();
  if (!isThere) {
    // An edit that can no longer be saved stays on the screen as long as nothing else is selected.
    if (!(state->hasUnsavedChanges && isApplied(state->selection))) select(std::nullopt);
  } else if (state->selectedArtifact && state->selection == state->selectedArtifact->id() &&
             isOutdated(*state->selectedArtifact)) {
    context_.tasks.start([this, id = *state->selection] { return refreshSelected(id); });
  }
  state.set<&State::artifacts>(std::move(artifacts));
  state.set<&State::libraryCondition>(
      LibraryCondition{std::nullopt, std::move(outcome->damagedBundles), std::move(outcome->conditions)});
}

Task<> LibraryFlow::refreshSelected(UUID id) {
  Task<Outcome<OpenArtifact>> loading = load(id);
  const Outcome<OpenArtifact> loaded = co_await std::move(loading);
  if (!loaded || !isApplied(id) || context_.state->selection != id) co_return;
  editing_.rebase(*loaded);
}

Task<Outcome<OpenArtifact>> LibraryFlow::load(UUID id) {
  Task<Outcome<LoadedArtifact>> loading = outcomeOf(context_.services.repository.load(id));
  Outcome<LoadedArtifact> loaded = co_await std::move(loading);
  if (!loaded) {
    rethrowCancellation(loaded.error());
    co_return std::unexpected(std::move(loaded.error()));
  }
  co_return openArtifact(std::move(*loaded));
}

void LibraryFlow::select(std::optional<UUID> id) {
  const std::uint64_t generation = ++selectionGeneration_;
  context_.state.set<&State::selection>(id);
  context_.state.set<&State::selectionFailure>(std::nullopt);
  if (isApplied(id)) return;
  if (!context_.state->hasUnsavedChanges) {
    if (!id) return editing_.open(std::nullopt);
    if (auto cached = cache_.find(*id)) return editing_.open(cached);
  }
  context_.tasks.start([this, id, generation] { return applySelection(id, generation); });
}

Task<> LibraryFlow::applySelection(std::optional<UUID> id, std::uint64_t generation) {
  std::optional<OpenArtifact> open = id ? cache_.find(*id) : std::nullopt;
  std::exception_ptr failure;
  if (id && !open) {
    Task<Outcome<OpenArtifact>> loading = load(*id);
    Outcome<OpenArtifact> loaded = co_await std::move(loading);
    if (!isCurrentSelectionRequest(generation)) co_return;
    if (loaded) {
      open = std::move(*loaded);
      cache_.insert(*open);
    } else {
      failure = loaded.error();
    }
  }
  Task<bool> saving = saveBeforeLeaving(generation);
  if (!co_await std::move(saving)) co_return;
  editing_.open(open);
  if (!failure) co_return;
  context_.state.set<&State::selectionFailure>(std::optional(failureText(failure)));
  context_.activity.showFailure(failureText(failure));
}

Task<bool> LibraryFlow::saveBeforeLeaving(std::uint64_t generation) {
  // The user may go on typing while the edits are written.
  while (context_.state->hasUnsavedChanges) {
    Task<SaveOutcome> saving = editing_.save(SaveFeedback::silent);
    const SaveOutcome outcome = co_await std::move(saving);
    if (!isCurrentSelectionRequest(generation)) co_return false;
    if (outcome == SaveOutcome::artifactIsGone || !context_.state->selectedArtifact) break;
    if (outcome == SaveOutcome::failed) {
      ++selectionGeneration_;
      context_.state.set<&State::selection>(std::optional(context_.state->selectedArtifact->id()));
      co_return false;
    }
  }
  co_return true;
}

bool LibraryFlow::isApplied(const std::optional<UUID>& id) const {
  const auto& selected = context_.state->selectedArtifact;
  return id ? selected && selected->id() == *id : !selected && !context_.state->hasUnsavedChanges;
}

void LibraryFlow::forget(const std::vector<UUID>& ids) {
  const auto isForgotten = [&](const UUID& id) { return std::ranges::find(ids, id) != ids.end(); };
  cache_.removeIf([&](const OpenArtifact& open) { return isForgotten(open.id()); });
  const std::optional<UUID> selection = context_.state->selection;
  const bool losesSelection = selection && isForgotten(*selection);
  const std::optional<UUID> next = losesSelection ? neighbour(*selection, ids) : std::nullopt;
  std::vector<StoredArtifact> artifacts = context_.state->artifacts;
  std::erase_if(artifacts, [&](const StoredArtifact& each) { return isForgotten(each.manifest.id); });
  context_.state.set<&State::artifacts>(std::move(artifacts));
  LibraryCondition condition = context_.state->libraryCondition;
  std::erase_if(condition.damagedBundles, [&](const DamagedBundle& each) { return isForgotten(each.id); });
  std::erase_if(condition.artifacts, [&](const auto& each) { return isForgotten(each.first); });
  context_.state.set<&State::libraryCondition>(std::move(condition));
  if (!losesSelection) return;
  if (isApplied(selection)) editing_.open(std::nullopt);  // what was typed since has nowhere to go
  select(next);
}

std::optional<UUID> LibraryFlow::neighbour(const UUID& id, const std::vector<UUID>& without) const {
  std::optional<UUID> before;
  bool isBehind = false;
  for (const std::size_t index : search_.shown()) {
    const UUID& each = context_.state->artifacts[index].manifest.id;
    isBehind = isBehind || each == id;
    if (std::ranges::find(without, each) != without.end()) continue;
    if (isBehind) return each;
    before = each;
  }
  return isBehind ? before : std::nullopt;
}

}  // namespace quillo
