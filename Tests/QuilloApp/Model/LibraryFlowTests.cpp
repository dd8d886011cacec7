#include <gmock/gmock.h>

#include "ModelFixture.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class LibraryFlowTest : public ModelFixture {};

TEST_F(LibraryFlowTest, startingListsTheNewestFirst) {
  store("old", 9);
  store("new", 1);
  model->startIfNeeded();
  EXPECT_TRUE(runUntil([&] { return activity() == "loading"; }));
  settle();
  EXPECT_THAT(titles(), ElementsAre("new", "old"));
  EXPECT_EQ(activity(), "idle");
  EXPECT_TRUE(state().capturePermissionState.isReady());
  const auto log = registrar.log;
  start();
  EXPECT_EQ(registrar.log, log) << "it starts once";
}

TEST_F(LibraryFlowTest, allChangesOfATurnAreToldTogether) {
  start();
  std::vector<QuilloModelChanges> told;
  std::optional<QuilloModelObservation> observation = model->observe([&](QuilloModelChanges changes) {
    told.push_back(changes);
    if (told.size() == 1) model->setApplicationFilter("from the observer");
  });
  model->setApplicationFilter("a");
  model->showOnboarding();
  model->hideOnboarding();
  model->setApplicationFilter("b");
  EXPECT_TRUE(told.empty());
  loop.runReady();
  QuilloModelChanges filter;
  filter.add(QuilloModelField::applicationFilter);
  QuilloModelChanges both = filter;
  both.add(QuilloModelField::isShowingOnboarding);
  EXPECT_THAT(told, ElementsAre(both, filter));
  model->setApplicationFilter("from the observer");
  loop.runReady();
  EXPECT_EQ(told.size(), 2U) << "what is there already is no change";
  observation.reset();
  model->setApplicationFilter("unobserved");
  loop.runReady();
  EXPECT_EQ(told.size(), 2U);
}

TEST_F(LibraryFlowTest, aDamagedArtifactIsReportedWhenItIsSelected) {
  const UUID good = store("good");
  const UUID damaged = store("damaged");
  start();
  select(good);
  std::filesystem::remove(repository.bundlePath(damaged) / "screenshot.png");
  select(damaged);
  EXPECT_THAT(activity(), HasSubstr("screenshot.png"));
  EXPECT_FALSE(state().selectedArtifact);
  EXPECT_EQ(state().draftTitle, "");
}

TEST_F(LibraryFlowTest, aLoadThatComesLateIsDropped) {
  const UUID a = store("A");
  const UUID b = store("B");
  start();
  select(b);
  std::vector<std::string> shown;
  const QuilloModelObservation observation =
      model->observe([&](QuilloModelChanges) { shown.push_back(state().draftTitle); });
  // B is in the cache, so that it is there before A has been read.
  model->select(a);
  loop.runUntil([&] { return !shown.empty(); });
  model->select(b);
  settle();
  EXPECT_EQ(state().selection, b);
  EXPECT_EQ(state().selectedArtifact->id(), b);
  EXPECT_EQ(state().draftTitle, "B");
  // And with neither in the cache.
  const UUID c = store("C");
  model->select(a);
  model->select(c);
  settle();
  EXPECT_EQ(state().draftTitle, "C");
  EXPECT_THAT(shown, testing::Not(testing::Contains("A")));
}

TEST_F(LibraryFlowTest, theThreeArtifactsLookedAtLastAreKept) {
  const std::vector<UUID> ids = {store("0"), store("1"), store("2"), store("3")};
  start();
  const auto reads = [&](const UUID& id) {
    return std::ranges::count(files.record->readScreenshots, id.text() + ".quillo");
  };
  for (const int i : {0, 1, 2, 0, 3}) select(ids[i]);  // 1 is the one looked at longest ago
  for (const int i : {0, 2, 3, 1}) select(ids[i]);
  EXPECT_EQ(reads(ids[0]), 1);
  EXPECT_EQ(reads(ids[1]), 2);
  EXPECT_EQ(reads(ids[2]), 1);
  EXPECT_EQ(reads(ids[3]), 1);
}

TEST_F(LibraryFlowTest, whatOthersChangeIsFollowedWithoutLosingADraft) {
  const UUID id = store("first");
  start();
  select(id);
  editFromOutside(id, "from outside", "a note");
  model->libraryChanged();
  model->libraryChanged();
  settle();
  EXPECT_THAT(titles(), ElementsAre("from outside"));
  EXPECT_EQ(state().draftTitle, "from outside");
  EXPECT_EQ(state().draftAnnotations, "a note");

  model->setDraftTitle("mine");
  editFromOutside(id, "theirs", "a longer note");
  model->libraryChanged();
  settle();
  EXPECT_EQ(state().draftTitle, "mine");
  EXPECT_EQ(state().draftAnnotations, "a longer note");
  EXPECT_TRUE(state().hasUnsavedChanges);
  advance(0.65);
  EXPECT_EQ(storedManifest(id).title, "mine");
  EXPECT_EQ(storedManifest(id).annotations, "a longer note");
}

TEST_F(LibraryFlowTest, anArtifactThatOthersRemoveStaysOnlyAsLongAsItHoldsAnEdit) {
  const UUID kept = store("kept");
  const UUID removed = store("removed");
  start();
  select(removed);
  model->setDraftAnnotations("do not lose this");
  outsideStore.moveToTrash(removed);
  model->libraryChanged();
  settle();
  EXPECT_THAT(titles(), ElementsAre("kept"));
  EXPECT_EQ(state().draftAnnotations, "do not lose this");
  advance(0.65);
  EXPECT_EQ(activity(), "failure: No artifact exists with ID " + removed.text() + ".");
  EXPECT_TRUE(state().hasUnsavedChanges);
  select(kept);
  EXPECT_EQ(state().draftTitle, "kept");
  outsideStore.moveToTrash(kept);
  model->libraryChanged();
  settle();
  EXPECT_FALSE(state().selection);
  EXPECT_FALSE(state().selectedArtifact);
}

TEST_F(LibraryFlowTest, theSelectedBundleAndTheLibraryAreRevealed) {
  const UUID id = store("shown");
  start();
  model->revealSelectedArtifact();
  select(id);
  model->revealSelectedArtifact();
  model->revealLibrary();
  EXPECT_THAT(fileManager.revealed, ElementsAre(id.text() + ".quillo", "library"));
}

}  // namespace
}  // namespace quillo::test
