// Draws the folio in every state into the build folder, for people to look at. Fails when a state cannot be shown.

#include <gtest/gtest.h>

#include <QDir>
#include <QTreeView>
#include <string>

#include "FolioFixture.h"
#include "QuilloApp/Interface/ContrastStyle.h"

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

struct Appearance {
  const char* name;
  QColor window, base, text, button, highlight, highlightedText;
};

const Appearance light{"light", {239, 240, 241}, Qt::white, {35, 38, 41}, {252, 252, 252}, {61, 174, 233}, Qt::white};
const Appearance dark{"dark", {42, 46, 50}, {27, 30, 32}, {252, 252, 252}, {49, 54, 59}, {61, 174, 233}, Qt::white};
const Appearance contrast{"contrast", Qt::black, Qt::black, Qt::white, Qt::black, Qt::yellow, Qt::black};

void wear(const Appearance& appearance) {
  QPalette palette;
  for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    QColor text = appearance.text;
    if (group == QPalette::Disabled) text.setAlpha(120);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
      palette.setColor(group, role, text);
    palette.setColor(group, QPalette::Window, appearance.window);
    palette.setColor(group, QPalette::Base, appearance.base);
    palette.setColor(group, QPalette::AlternateBase, appearance.window);
    palette.setColor(group, QPalette::Button, appearance.button);
    palette.setColor(group, QPalette::Highlight, appearance.highlight);
    palette.setColor(group, QPalette::HighlightedText, appearance.highlightedText);
    text.setAlpha(140);
    palette.setColor(group, QPalette::PlaceholderText, text);
  }
  QApplication::setPalette(palette);
}

class FolioPictures : public FolioFixture {
 protected:
  ~FolioPictures() override {
    QApplication::setPalette(QPalette());
    QApplication::setLayoutDirection(Qt::LeftToRight);
  }

  /// As it is now, in every look.
  void write(const std::string& name) {
    for (const Appearance* appearance : {&light, &dark, &contrast}) {
      wear(*appearance);
      draw(name + "-" + appearance->name, 1);
      draw(name + "-" + appearance->name + "-2x", 2);
    }
  }

  void draw(const std::string& name, double ratio) {
    application.processEvents();
    QImage image((QSizeF(pane->size()) * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(pane->palette().color(QPalette::Window));
    pane->render(&image);
    const QString folder = QStringLiteral(QUILLO_PICTURE_FOLDER);
    EXPECT_TRUE(QDir().mkpath(folder));
    EXPECT_TRUE(
        image.save(folder + QStringLiteral("/inspector-") + QString::fromStdString(name) + QStringLiteral(".png")));
  }
};

TEST_F(FolioPictures, ofEveryState) {
  QApplication::setStyle(new ContrastStyle(QStringLiteral("Fusion")));
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
  write("reading");
  waitFor(wholeID);
  auto& ledger = find<LedgerPane>("ledgerPane");
  auto& screenshot = find<ScreenshotView>("screenshot");
  ledger.selectLine(-1);
  write("whole");
  ledger.selectLine(10);
  ledger.setPointed(8);
  screenshot.setPointed(ledger.ledger()->line(8).frame);
  write("lit");
  find<QTabWidget>("pages").setCurrentIndex(1);
  write("paste");
  find<QTabWidget>("pages").setCurrentIndex(0);
  find<QLineEdit>("ledgerSearch").setText(QStringLiteral("in"));
  screenshot.setZoom(1);
  write("searching-at-100");
  find<QLineEdit>("ledgerSearch").clear();
  files.record->isFull = true;
  find<QPlainTextEdit>("annotations").setPlainText(QStringLiteral("Answer it"));
  advance(1);
  pass();
  write("not-saved");
  files.record->isFull = false;
  find<QPlainTextEdit>("annotations").setPlainText(QStringLiteral("Answer it!"));
  advance(1);
  pass();
  waitFor(unreadableID);
  write("unreadable");
  waitFor(partialID);
  find<QToolButton>("coverageMore").setChecked(true);
  write("partial-details");
  find<QToolButton>("coverageMore").setChecked(false);
  pane->resize(560, 536);
  write("smallest");
  QApplication::setLayoutDirection(Qt::RightToLeft);
  ledger.selectLine(10);
  write("smallest-right-to-left");
  pane->resize(784, 680);
  write("right-to-left");
}

}  // namespace
}  // namespace quillo::test
