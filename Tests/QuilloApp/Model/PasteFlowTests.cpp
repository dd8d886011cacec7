#include <gmock/gmock.h>

#include "ModelFixture.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class PasteFlowTest : public ModelFixture {
 protected:
  PasteFlowTest() : id(store("Title")) {
    start();
    select(id);
  }

  void untilMessage() {
    EXPECT_TRUE(runUntil([&] { return state().activity.isMessage(); }));
  }
  std::string paste(std::optional<std::int32_t> processIdentifier = 500) {
    model->pasteSelectedArtifact(processIdentifier);
    EXPECT_EQ(activity(), "pasting");
    untilMessage();
    return activity();
  }
  /// What is on the clipboard under a type; empty when nothing is.
  std::string clipboard(const std::string& type) {
    for (const auto& item : pasteboard.contents.items) {
      for (const auto& each : item) {
        if (each.content.type == type) return each.content.data;
      }
    }
    return {};
  }

  UUID id;
};

TEST_F(PasteFlowTest, theShortcutPastesWhatIsOnTheScreenAndGivesTheClipboardBack) {
  pasteboard.replaceFromOutside({.topLevelTypes = {"text/plain"}, .items = {{{.content = {"text/plain", "mine"}}}}});
  model->setDraftAnnotations("look here");
  std::vector<std::string> pasted;
  destination.onPaste = [&] { pasted.push_back(clipboard("image/png") + clipboard("text/plain;charset=utf-8")); };
  applications.frontmost.emplace().processIdentifier = 321;
  registrar.press(state().hotKeyConfiguration.paste);
  EXPECT_FALSE(model->canPasteSelectedArtifact());
  untilMessage();
  EXPECT_EQ(activity(), "success: Screenshot, interface map, and note pasted");
  EXPECT_THAT(destination.frozen, ElementsAre(321));
  ASSERT_EQ(pasted.size(), 2U);
  EXPECT_EQ(pasted[0], "png of Title");
  EXPECT_THAT(pasted[1], HasSubstr("# Quillo capture: Title"));
  EXPECT_THAT(pasted[1], HasSubstr("## Human annotation\nlook here"));
  EXPECT_EQ(clipboard("text/plain"), "mine");
  EXPECT_TRUE(model->canPasteSelectedArtifact());
}

TEST_F(PasteFlowTest, everyWayOfFailingHasItsMessage) {
  const auto freezeFails = [this](PasteTargetFreezeError error) { destination.resolution = std::unexpected(error); };
  struct Case {
    std::string message;
    std::function<void()> arrange;
  };
  const std::vector<Case> cases = {
      {"Quillo needs Accessibility access to paste here",
       [&] { freezeFails(PasteTargetFreezeError::accessibilityPermissionRequired); }},
      {"Focus an editable destination, then use ⌃⌥⌘V",
       [&] { freezeFails(PasteTargetFreezeError::destinationUnavailable); }},
      {"The destination changed before Quillo could start pasting",
       [&] { freezeFails(PasteTargetFreezeError::destinationChanged); }},
      {"The destination changed before Quillo could finish pasting", [&] { destination.hasFocus = false; }},
      {"The destination did not accept the capture", [&] { destination.keystroke = PasteKeystrokeResult::failed; }},
      {"The clipboard changed before Quillo could finish pasting",
       [&] { destination.onPaste = [&] { pasteboard.replaceFromOutside({}); }; }},
      {"The clipboard rejected part of this capture",
       [&] { pasteboard.beforeReplacing = [&] { pasteboard.rejectsWrites = !pasteboard.rejectsWrites; }; }},
      {"The current clipboard cannot be preserved losslessly",
       [&] {
         pasteboard.contents = {.topLevelTypes = {"image/x"},
                                .items = {{{.content = {"image/x", ""}, .answer = PasteboardReading::Answer::failed}}}};
       }},
  };
  for (const Case& each : cases) {
    destination.hasFocus = true;
    destination.resolution = FrozenPasteTarget{};
    destination.keystroke = PasteKeystrokeResult::sent;
    destination.onPaste = nullptr;
    pasteboard.beforeReplacing = nullptr;
    pasteboard.replaceFromOutside({});
    each.arrange();
    EXPECT_EQ(paste(), "failure: " + each.message);
  }
  pasteboard.contents = {};
  destination.frontmost.reset();
  EXPECT_EQ(paste(std::nullopt), "failure: Focus an editable destination, then use ⌃⌥⌘V");
}

TEST_F(PasteFlowTest, aClipboardThatCouldNotBeGivenBackIsMentioned) {
  pasteboard.replaceFromOutside({.topLevelTypes = {"text/plain"}, .items = {{{.content = {"text/plain", "mine"}}}}});
  int count = 0;
  destination.onPaste = [&] { pasteboard.rejectsWrites = ++count == 2; };
  EXPECT_EQ(paste(), "success: Capture pasted, but Quillo could not restore the previous clipboard");
  pasteboard.rejectsWrites = false;
  pasteboard.replaceFromOutside({.topLevelTypes = {"text/plain"}, .items = {{{.content = {"text/plain", "mine"}}}}});
  destination.onPaste = [&] { pasteboard.rejectsWrites = true; };
  destination.keystroke = PasteKeystrokeResult::failed;
  EXPECT_EQ(paste(), "failure: Paste stopped, and Quillo could not restore the previous clipboard");
}

TEST_F(PasteFlowTest, onePasteAtATimeAndOnlyWithTheKeysReleased) {
  modifiers.held.control = true;
  model->pasteSelectedArtifact(500);
  settle();
  EXPECT_EQ(activity(), "pasting");
  EXPECT_FALSE(model->canPasteSelectedArtifact());
  for (const auto& again : {std::function<void()>([&] { model->pasteSelectedArtifact(500); }),
                            std::function<void()>([&] { model->pasteSelectedArtifactFromMenu(); }),
                            std::function<void()>([&] { model->copySelectedArtifactToClipboard(); })}) {
    again();
    EXPECT_EQ(activity(), "failure: Another Quillo paste is still in progress");
  }
  for (int i = 0; i < 80; ++i) {
    loop.runReady();
    clock.advance(0.01);
  }
  settle();
  EXPECT_EQ(activity(), "failure: Release the shortcut keys, then try pasting again");
  modifiers.held.control = false;
  EXPECT_EQ(paste(), "success: Screenshot, interface map, and note pasted");
}

TEST_F(PasteFlowTest, theMenuPastesIntoWhatHadTheFocusWhenItOpened) {
  const std::string message = "failure: Open the Quillo menu from an editable destination, then choose Paste";
  model->pasteSelectedArtifactFromMenu();
  EXPECT_EQ(activity(), message);

  model->preparePasteDestinationForMenu();
  settle();
  EXPECT_THAT(destination.frozen, ElementsAre(500));
  destination.frontmost = 600;
  model->pasteSelectedArtifactFromMenu();
  untilMessage();
  EXPECT_EQ(activity(), "success: Screenshot, interface map, and note pasted");
  EXPECT_THAT(destination.frozen, ElementsAre(500));

  destination.resolution = std::unexpected(PasteTargetFreezeError::destinationUnavailable);
  model->preparePasteDestinationForMenu();
  model->pasteSelectedArtifactFromMenu();
  untilMessage();
  EXPECT_EQ(activity(), message);
}

TEST_F(PasteFlowTest, copyingLeavesTheCaptureOnTheClipboard) {
  model->setDraftTitle("Edited");
  model->copySelectedArtifactToClipboard();
  untilMessage();
  EXPECT_EQ(activity(), "success: Screenshot, interface map, and note copied");
  EXPECT_EQ(clipboard("image/png"), "png of Title");
  EXPECT_THAT(clipboard("text/plain;charset=utf-8"), HasSubstr("# Quillo capture: Edited"));
  EXPECT_EQ(pasteboard.use, PasteboardUse::offered);

  const auto copyFails = [&] {
    advance(6);
    model->copySelectedArtifactToClipboard();
    untilMessage();
    EXPECT_EQ(activity(), "failure: The clipboard rejected this artifact");
  };
  pasteboard.rejectsWrites = true;
  copyFails();
  pasteboard.error = PasteboardError(PasteboardError::DisplayLost{});
  copyFails();
}

TEST_F(PasteFlowTest, whatIsNotLoadedYetIsPastedAllTheSame) {
  const UUID other = store("Other");
  model->select(other);
  model->copySelectedArtifactToClipboard();
  untilMessage();
  EXPECT_THAT(clipboard("text/plain;charset=utf-8"), HasSubstr("# Quillo capture: Other"));
}

TEST_F(PasteFlowTest, withoutASelectionThereIsNothingToPaste) {
  model->select(std::nullopt);
  EXPECT_FALSE(model->canPasteSelectedArtifact());
  model->pasteSelectedArtifact(500);
  EXPECT_EQ(activity(), "failure: Select a capture in the library first");
  EXPECT_THAT(destination.frozen, IsEmpty());
}

}  // namespace
}  // namespace quillo::test
