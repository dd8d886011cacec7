#include <gmock/gmock.h>

#include "ModelFixture.h"
#include "Tests/Support/Gate.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class TrashFlowTest : public ModelFixture {
 protected:
  TrashFlowTest() : ids{store("a", 1), store("b", 2), store("c", 3), store("d", 4)} { start(); }

  void moveToTrash(const std::vector<int>& which) {
    std::vector<UUID> moved;
    moved.reserve(which.size());
    for (const int i : which) moved.push_back(ids[i]);
    model->moveArtifactsToTrash(moved);
    EXPECT_TRUE(state().trashIsInProgress);
    settle();
    EXPECT_FALSE(state().trashIsInProgress);
  }

  std::vector<UUID> ids;
};

TEST_F(TrashFlowTest, tellsHowManyWereMoved) {
  moveToTrash({1});
  EXPECT_EQ(activity(), "success: Artifact moved to Trash");
  EXPECT_THAT(titles(), ElementsAre("a", "c", "d"));
  moveToTrash({0, 2});
  EXPECT_EQ(activity(), "success: 2 artifacts moved to Trash");
  EXPECT_THAT(titles(), ElementsAre("d"));
}

TEST_F(TrashFlowTest, tellsHowManyCouldNotBeMoved) {
  immovable = {ids[1].text() + ".quillo"};
  moveToTrash({0, 1, 2});
  EXPECT_EQ(activity(), "failure: Moved 2 to Trash; 1 could not be moved");
  EXPECT_THAT(titles(), ElementsAre("b", "d"));
  moveToTrash({1});
  EXPECT_EQ(activity(), "failure: Moved 0 to Trash; 1 could not be moved");
  std::filesystem::remove_all(repository.bundlePath(ids[3]));
  moveToTrash({3});
  EXPECT_EQ(activity(), "failure: Moved 0 to Trash; 1 could not be moved");
  EXPECT_THAT(titles(), ElementsAre("b")) << "what somebody else has removed goes from the list too";
}

TEST_F(TrashFlowTest, theSelectionMovesToWhatTakesItsPlace) {
  select(ids[1]);
  moveToTrash({1, 2});
  EXPECT_EQ(state().draftTitle, "d");
  moveToTrash({3});
  EXPECT_EQ(state().draftTitle, "a");
  moveToTrash({0});
  EXPECT_FALSE(state().selection);
  EXPECT_FALSE(state().selectedArtifact);
  EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(TrashFlowTest, theLastMoveCanBeUndoneOnce) {
  select(ids[2]);
  moveToTrash({1, 2});
  EXPECT_EQ(state().undoableTrashCount, 2U);
  const auto undo = [&] {
    model->undoMoveToTrash();
    settle();
  };
  undo();
  EXPECT_EQ(activity(), "success: 2 artifacts put back from Trash");
  EXPECT_THAT(titles(), ElementsAre("a", "b", "c", "d"));
  EXPECT_EQ(state().draftTitle, "b");
  EXPECT_EQ(state().undoableTrashCount, 0U);
  undo();
  EXPECT_EQ(activity(), "success: 2 artifacts put back from Trash") << "nothing is left to undo";

  moveToTrash({0});
  immovable = {ids[1].text() + ".quillo"};
  moveToTrash({1});
  undo();
  EXPECT_EQ(activity(), "success: Artifact put back from Trash") << "a move that moved nothing is not undone";
  EXPECT_EQ(titles().size(), 4U);
}

TEST_F(TrashFlowTest, undoingReplacesNothingAndSaysWhatIsGone) {
  moveToTrash({0, 3});
  std::filesystem::create_directory(repository.bundlePath(ids[0]));
  model->undoMoveToTrash();
  settle();
  EXPECT_EQ(activity(), "failure: Put back 1 from Trash; 1 could not be put back: An artifact with ID " +
                            ids[0].text() + " already exists.");
  EXPECT_TRUE(std::filesystem::is_empty(repository.bundlePath(ids[0])));

  trashTellsPlace = false;
  moveToTrash({3});
  EXPECT_EQ(state().undoableTrashCount, 0U);
}

TEST_F(TrashFlowTest, aDamagedBundleIsShownWithItsReasonAndCanBeMovedToo) {
  writeFile(repository.bundlePath(ids[1]) / "manifest.json", "{");
  std::filesystem::remove(repository.bundlePath(ids[2]) / "screenshot.png");
  model->libraryChanged();
  settle();
  EXPECT_THAT(titles(), ElementsAre("a", "c", "d"));
  ASSERT_EQ(state().libraryCondition.damagedBundles.size(), 1U);
  const DamagedBundle& damaged = state().libraryCondition.damagedBundles.front();
  EXPECT_EQ(damaged.id, ids[1]);
  EXPECT_THAT(damaged.reason, HasSubstr("manifest.json"));
  const ArtifactCondition condition{ArtifactCondition::Kind::damaged, "missing: screenshot.png"};
  EXPECT_THAT(state().libraryCondition.artifacts, ElementsAre(testing::Pair(ids[2], condition)));

  select(ids[1]);
  ASSERT_TRUE(state().selectionFailure);
  EXPECT_THAT(*state().selectionFailure, HasSubstr("manifest.json"));
  model->libraryChanged();
  settle();
  EXPECT_EQ(state().selection, ids[1]) << "it stays selected as long as it is there";
  moveToTrash({1, 2});
  EXPECT_EQ(activity(), "success: 2 artifacts moved to Trash");
  EXPECT_EQ(state().libraryCondition, LibraryCondition());
  EXPECT_FALSE(state().selectionFailure);
}

TEST_F(TrashFlowTest, anEditGoesToTheTrashWithItsArtifact) {
  select(ids[0]);
  model->setDraftAnnotations("last words");
  files.record->isFull = true;
  moveToTrash({0});
  EXPECT_THAT(activity(), HasSubstr("No space left on device"));
  EXPECT_EQ(titles().size(), 4U) << "nothing is moved while its edit cannot be kept";
  files.record->isFull = false;
  moveToTrash({0});
  EXPECT_EQ(activity(), "success: Artifact moved to Trash");
  EXPECT_EQ(files.record->writtenManifestCount, 1);
}

TEST_F(TrashFlowTest, whenTheSelectionChangesBeforeTheMoveNothingIsMoved) {
  Gate diskAnswers;
  files.record->beforeWriting = [&] { diskAnswers.pass(); };
  select(ids[0]);
  model->setDraftAnnotations("being saved");
  model->moveArtifactsToTrash({ids[0]});
  model->moveArtifactsToTrash({ids[2]});  // one at a time
  loop.runReady();
  model->select(ids[1]);
  diskAnswers.open();
  settle();
  EXPECT_EQ(activity(), "failure: The selected artifact changed before it could be moved");
  EXPECT_EQ(titles().size(), 4U);
  EXPECT_EQ(state().draftTitle, "b");
}

}  // namespace
}  // namespace quillo::test
