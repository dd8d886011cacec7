#include "QuilloApp/Model/SearchFlow.h"

#include <gmock/gmock.h>

#include "ModelFixture.h"
#include "Tests/Support/Gate.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SearchFlowTest : public ModelFixture {
 protected:
  std::vector<std::string> shown() { return titlesOf(model->filteredArtifacts()); }

  UUID storeText(const std::string& title, int minutesAgo, const std::string& text) {
    const UUID id = store(title, minutesAgo);
    const StoredArtifact stored = outsideStore.load(id).stored;
    ArtifactManifest manifest = stored.manifest;
    manifest.contextText = text;
    outsideStore.update(stored, manifest);
    return id;
  }
};

TEST_F(SearchFlowTest, findsWordsInTheListAtOnceAndInCapturedTextsAfterwards) {
  storeText("Letter", 1, "A line about WHALES\nand the sea");
  storeText("Invoice", 2, "Sum and date");
  storeText("Whale song ÄRGER", 3, "Nothing else");
  start();
  model->setSearchQuery("whale");
  EXPECT_THAT(shown(), ElementsAre("Whale song ÄRGER"));
  EXPECT_TRUE(state().capturedTextSearch.isRunning);
  settle();
  EXPECT_FALSE(state().capturedTextSearch.isRunning);
  EXPECT_THAT(shown(), ElementsAre("Letter", "Whale song ÄRGER"));

  struct Case {
    const char* query;
    std::vector<std::string> expected;
  };
  const std::vector<Case> cases{{"letter sea", {"Letter"}},  // one word from the title, one from the text
                                {"sum SEA", {}},
                                {" ärger  window ", {"Whale song ÄRGER"}},  // of the window's title
                                {"and", {"Letter", "Invoice"}},
                                {"  ", {"Letter", "Invoice", "Whale song ÄRGER"}}};
  for (const Case& each : cases) {
    model->setSearchQuery(each.query);
    settle();
    EXPECT_EQ(shown(), each.expected) << each.query;
  }
}

TEST_F(SearchFlowTest, followsTheLibraryAndDropsWhatAnEarlierQueryFinds) {
  storeText("One", 1, "apple");
  start();
  model->setSearchQuery("apple");
  loop.runReady();
  model->setSearchQuery("pear");
  settle();
  EXPECT_THAT(shown(), IsEmpty());
  storeText("Two", 2, "pear");
  model->libraryChanged();
  settle();
  EXPECT_THAT(shown(), ElementsAre("Two"));
  std::filesystem::remove_all(folder.path());
  model->setSearchQuery("peach");
  settle();
  EXPECT_FALSE(state().capturedTextSearch.isRunning) << "an unreadable library ends the search";
}

TEST_F(SearchFlowTest, countsApplicationsAmongWhatMatchesAndFiltersByOne) {
  storeOf("web", "news", 1);
  storeOf("Mail", "letter", 2);
  storeOf("web", "letter", 3);
  start();
  EXPECT_THAT(model->applicationCounts(), ElementsAre(ApplicationCount{"Mail", 1}, ApplicationCount{"web", 2}));
  model->setSearchQuery("letter");
  EXPECT_THAT(model->applicationCounts(), ElementsAre(ApplicationCount{"Mail", 1}, ApplicationCount{"web", 1}));
  model->setApplicationFilter("web");
  EXPECT_THAT(model->applicationCounts(), ElementsAre(ApplicationCount{"Mail", 1}, ApplicationCount{"web", 1}))
      << "the other choices stay";
  model->setSearchQuery({});
  EXPECT_THAT(shown(), ElementsAre("news", "letter"));
  model->setApplicationFilter(std::nullopt);
  EXPECT_EQ(shown().size(), 3U);
}

}  // namespace
}  // namespace quillo::test
