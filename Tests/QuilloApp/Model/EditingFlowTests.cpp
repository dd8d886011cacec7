#include <gmock/gmock.h>

#include "ModelFixture.h"
#include "Tests/Support/Gate.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class EditingFlowTest : public ModelFixture {
 protected:
  EditingFlowTest() : id(store("Title", 1, "Window")) {
    start();
    select(id);
  }

  int writtenManifestCount() const { return files.record->writtenManifestCount; }

  UUID id;
};

TEST_F(EditingFlowTest, typingWithoutPauseSavesOnceAfterTheLastKey) {
  for (int key = 1; key <= 10; ++key) {
    model->setDraftTitle("Title" + std::string(key, '!'));
    advance(0.6);
  }
  EXPECT_EQ(writtenManifestCount(), 0);
  EXPECT_TRUE(state().hasUnsavedChanges);
  wallClock.present += std::chrono::milliseconds(90'500);
  advance(0.05);
  EXPECT_EQ(writtenManifestCount(), 1);
  EXPECT_FALSE(state().hasUnsavedChanges);
  EXPECT_THAT(titles(), ElementsAre("Title!!!!!!!!!!"));
  EXPECT_EQ(storedManifest(id).title, "Title!!!!!!!!!!");
  EXPECT_EQ(storedManifest(id).modifiedAt, Date(std::chrono::seconds(1'700'000'090)));
  EXPECT_EQ(state().selectedArtifact->stored.manifest.title, "Title!!!!!!!!!!");
  EXPECT_EQ(activity(), "idle") << "without feedback";
  advance(10);
  EXPECT_EQ(writtenManifestCount(), 1);
}

TEST_F(EditingFlowTest, aTitleIsTrimmedAndAnEmptyOneIsTheWindows) {
  model->setDraftTitle(" \n Fresh\u00A0\n");
  model->setDraftAnnotations("  note \n");
  EXPECT_TRUE(await(model->saveEdits(SaveFeedback::shown)));
  EXPECT_EQ(storedManifest(id).title, "Fresh");
  EXPECT_EQ(storedManifest(id).annotations, "  note \n");
  EXPECT_EQ(state().draftTitle, " \n Fresh\u00A0\n") << "what is being typed stays as it is";
  EXPECT_EQ(activity(), "idle");
  model->setDraftTitle("\n ");
  EXPECT_TRUE(await(model->saveEdits(SaveFeedback::silent)));
  EXPECT_EQ(storedManifest(id).title, "Window");
  EXPECT_TRUE(await(model->saveEdits(SaveFeedback::shown))) << "there is nothing left to save";
  EXPECT_EQ(writtenManifestCount(), 2);
}

TEST_F(EditingFlowTest, anEditMadeDuringASaveIsSavedToo) {
  Gate diskAnswers;
  files.record->beforeWriting = [&] { diskAnswers.pass(); };
  model->setDraftTitle("one");
  loop.runReady();
  clock.advance(0.65);
  loop.runReady();  // the save is on its way
  model->setDraftTitle("two");
  diskAnswers.open();
  settle();
  EXPECT_EQ(storedManifest(id).title, "one");
  EXPECT_TRUE(state().hasUnsavedChanges);
  EXPECT_EQ(state().draftTitle, "two");
  advance(0.65);
  EXPECT_EQ(storedManifest(id).title, "two");
  EXPECT_FALSE(state().hasUnsavedChanges);
}

TEST_F(EditingFlowTest, aFullDiskKeepsTheEditOnTheScreenAndSaysSo) {
  const UUID other = store("other");
  files.record->isFull = true;
  model->setDraftTitle("edited");
  advance(0.65);
  EXPECT_THAT(activity(), HasSubstr("failure: Could not write"));
  EXPECT_THAT(activity(), HasSubstr("No space left on device"));
  EXPECT_TRUE(state().hasUnsavedChanges);
  EXPECT_FALSE(await(model->saveEdits(SaveFeedback::shown)));

  select(other);
  EXPECT_EQ(state().selection, id) << "the selection stays with what cannot be saved";
  EXPECT_EQ(state().draftTitle, "edited");
  EXPECT_TRUE(state().hasUnsavedChanges);

  files.record->isFull = false;
  select(other);
  EXPECT_EQ(state().draftTitle, "other");
  EXPECT_FALSE(state().hasUnsavedChanges);
  EXPECT_EQ(storedManifest(id).title, "edited");
  select(id);
  EXPECT_EQ(state().draftTitle, "edited");
}

TEST_F(EditingFlowTest, anEditOfNothingIsRefused) {
  model->select(std::nullopt);
  EXPECT_EQ(state().draftTitle, "");
  model->setDraftTitle("of what?");
  EXPECT_FALSE(await(model->saveEdits(SaveFeedback::silent)));
  EXPECT_EQ(activity(), "failure: Quillo could not identify the artifact whose changes need saving");
  select(id);
  EXPECT_EQ(state().draftTitle, "Title") << "it does not hold up the next selection";
}

}  // namespace
}  // namespace quillo::test
