// Draws the folio in every state, for people to look at.

#include <gtest/gtest.h>

#include <string>

#include "FolioFixture.h"
#include "Pictures.h"

namespace quillo::test {
namespace {

constexpr std::string_view mail = R"(
window 'Travel plans — Mail' frame=0,0,800,520
  toolbar 'Main toolbar' frame=0,0,800,48
    button 'Reply' frame=12,8,80,32
    button 'Archive' frame=100,8,80,32 [disabled]
    searchField label='Search mail' frame=560,8,228,32
  group 'Mailboxes' frame=0,48,180,472
    text value='Inbox' frame=12,60,150,24
    text value='Drafts' frame=12,88,150,24
  text value='Travel plans' frame=200,64,560,32
  text value='Dear Ada, the train leaves at nine and arrives shortly after two. Shall we meet at the station?' frame=200,110,560,60
  textField label='Account' value='ada@example.org' frame=200,200,280,32 [focused]
  textField label='Password' frame=200,240,280,32 [protected]
  checkBox 'Remember me' frame=200,284,200,24
  button 'Send' frame=200,330,90,32
)";

class FolioPictures : public FolioFixture {
 protected:
  void draw(const std::string& name) { drawPictures(*pane, "inspector-" + name); }
};

TEST_F(FolioPictures, ofEveryState) {
  ContextArtifactDraft partial = draft(mail);
  partial.manifest.annotations = "Ask whether the nine o'clock train still runs on Sundays.";
  auto& completeness = partial.interfaceObservation.completeness;
  completeness.wasSourceTruncated = true;
  completeness.sourceTruncations = {{AccessibilityTruncationReason::nodeLimit, {}, {}, 1280}};
  completeness.warnings = {"The window moved while it was being read."};
  completeness.prunedNodeCount = 17;
  const UUID partialID = store(partial);
  ContextArtifactDraft unreadable = draft("window 'Blank' frame=0,0,400,300");
  unreadable.screenshotPNG = "no picture";
  const UUID unreadableID = store(unreadable);
  const UUID wholeID = store(draft(mail));

  pane->show();
  start();
  model->select(wholeID);
  EXPECT_TRUE(loop.runUntil([&] { return state().selectedArtifact && state().selectedArtifact->id() == wholeID; }));
  pane->update(QuilloModelChanges::everything());
  draw("reading");
  waitFor(wholeID);
  auto& ledger = find<LedgerPane>("ledgerPane");
  auto& screenshot = find<ScreenshotView>("screenshot");
  ledger.selectLine(-1);
  draw("whole");
  ledger.selectLine(10);
  ledger.setPointed(8);
  screenshot.setPointed(ledger.ledger()->line(8).frame);
  draw("lit");
  find<QTabWidget>("pages").setCurrentIndex(1);
  draw("paste");
  find<QTabWidget>("pages").setCurrentIndex(0);
  find<QLineEdit>("ledgerSearch").setText(QStringLiteral("in"));
  screenshot.setZoom(1);
  draw("searching-at-100");
  find<QLineEdit>("ledgerSearch").clear();
  files.record->isFull = true;
  find<QPlainTextEdit>("annotations").setPlainText(QStringLiteral("Answer it"));
  advance(1);
  pass();
  draw("not-saved");
  files.record->isFull = false;
  find<QPlainTextEdit>("annotations").setPlainText(QStringLiteral("Answer it!"));
  advance(1);
  pass();
  waitFor(unreadableID);
  draw("unreadable");
  waitFor(partialID);
  find<QToolButton>("coverageMore").setChecked(true);
  draw("partial-details");
  find<QToolButton>("coverageMore").setChecked(false);
  pane->resize(560, 536);
  draw("smallest");
}

}  // namespace
}  // namespace quillo::test
