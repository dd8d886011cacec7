#include <gtest/gtest.h>

#include <QAccessible>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QTreeView>
#include <string>

#include "FolioFixture.h"
#include "QuilloApp/Inspector/ScreenshotPane.h"

namespace quillo::test {
namespace {

constexpr std::string_view signIn = R"(
window 'Sign in' frame=100,50,400,300
  text value='Welcome back' frame=120,60,200,24
  textField label='Name' value='Ada' frame=120,90,200,30
  textField label='Password' frame=120,130,200,30 [protected]
  group 'Choices' frame=110,170,380,100
    checkBox 'Remember me' frame=120,180,160,20
    checkBox 'Send news' frame=120,210,160,20
  button 'Send' frame=120,290,90,30
)";

class InspectorPaneTest : public FolioFixture {
 protected:
  QTreeView& ledger() { return find<QTreeView>("ledger"); }
  ScreenshotView& picture() { return find<ScreenshotView>("screenshot"); }
  std::string selectedLine() { return ledger().currentIndex().data().toString().toStdString(); }
  std::string described() { return picture().accessibleDescription().toStdString(); }
  QString text(const char* label) { return find<QLabel>(label).text(); }

  /// Where a point of the screen is shown when the whole picture is.
  QPoint shownAt(double x, double y) {
    const QSizeF room = picture().viewport()->size();
    const double scale = picture().zoom() * 2;  // two pixels a point
    return {static_cast<int>((room.width() - 400 * scale) / 2 + (x - 100) * scale),
            static_cast<int>((room.height() - 300 * scale) / 2 + (y - 50) * scale)};
  }
};

TEST_F(InspectorPaneTest, thePictureSelectsWhatIsClickedAndMovesWhereItIsDragged) {
  open(store(draft(signIn)));
  QTest::mouseClick(picture().viewport(), Qt::LeftButton, {}, shownAt(150, 190));
  EXPECT_EQ("checkbox Remember me", selectedLine());
  EXPECT_TRUE(described().ends_with("Lit: checkbox Remember me")) << described();
  QTest::mouseClick(picture().viewport(), Qt::LeftButton, {}, shownAt(450, 260));
  EXPECT_EQ("section Choices", selectedLine());

  // Dragging moves the picture and selects nothing.
  QTest::keyClick(&picture(), Qt::Key_1);
  QTest::keyClick(&picture(), Qt::Key_Plus);
  EXPECT_TRUE(described().starts_with("150 percent")) << described();
  const int before = picture().horizontalScrollBar()->value();
  QTest::mousePress(picture().viewport(), Qt::LeftButton, {}, QPoint(100, 100));
  QTest::mouseMove(picture().viewport(), QPoint(60, 100));
  QTest::mouseRelease(picture().viewport(), Qt::LeftButton, {}, QPoint(60, 100));
  EXPECT_EQ("section Choices", selectedLine());
  EXPECT_NE(before, picture().horizontalScrollBar()->value());
  // A line that is out of sight comes into it.
  QTest::keyClick(&ledger(), Qt::Key_End);
  EXPECT_EQ("button Send", selectedLine());
  EXPECT_LE(picture().verticalScrollBar()->value(), (290 - 50) * 3);
  EXPECT_GE(picture().verticalScrollBar()->value() + picture().viewport()->height(), (320 - 50) * 3);
  QTest::keyClick(&picture(), Qt::Key_0);
  EXPECT_TRUE(picture().isFitted());
}

TEST_F(InspectorPaneTest, searchesTheLedger) {
  open(store(draft(signIn)));
  auto& search = find<QLineEdit>("ledgerSearch");
  search.setFocus();
  QTest::keyClicks(&search, "check");
  EXPECT_EQ("checkbox Remember me", selectedLine());
  EXPECT_EQ("1 of 2", text("ledgerMatches"));
  QTest::keyClick(&search, Qt::Key_Return);
  EXPECT_EQ("checkbox Send news", selectedLine());
  EXPECT_EQ("2 of 2", text("ledgerMatches"));
  QTest::keyClick(&search, Qt::Key_Return);
  EXPECT_EQ("1 of 2", text("ledgerMatches")) << "from the last to the first";
  QTest::keyClick(&search, Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ("checkbox Send news", selectedLine());
  QTest::keyClicks(&search, "no such");
  EXPECT_EQ("No match", text("ledgerMatches"));
  QTest::keyClick(&search, Qt::Key_Escape);
  EXPECT_EQ("", search.text());
}

TEST_F(InspectorPaneTest, saysInWordsHowFarAnEditIsSaved) {
  const UUID id = store(draft(signIn));
  open(id);
  ledger().setCurrentIndex(ledger().model()->index(0, 0));
  EXPECT_EQ("Saved", text("saveState"));
  QTest::keyClicks(&find<QPlainTextEdit>("annotations"), "Answer it");
  pass();
  EXPECT_EQ("Not saved yet", text("saveState"));
  EXPECT_TRUE(find<QPlainTextEdit>("pastePreview").toPlainText().contains("## Human annotation\nAnswer it\n"));
  files.record->isFull = true;
  advance(1);
  pass();
  EXPECT_TRUE(text("saveState").startsWith("Not saved: ")) << text("saveState").toStdString();
  EXPECT_TRUE(text("saveState").endsWith("What you wrote is kept here.")) << text("saveState").toStdString();
  EXPECT_EQ("Answer it", find<QPlainTextEdit>("annotations").toPlainText());
  files.record->isFull = false;
  QTest::keyClicks(&find<QPlainTextEdit>("annotations"), "!");
  advance(1);
  pass();
  EXPECT_EQ("Saved", text("saveState"));
  EXPECT_EQ("Answer it!", storedManifest(id).annotations);
  EXPECT_EQ("window Sign in", selectedLine()) << "saving does not begin the ledger anew";
}

TEST_F(InspectorPaneTest, takesNoWordsForTheFormerCaptureWhileTheNextIsLoaded) {
  const UUID next = store(draft(signIn));
  open(store(draft(signIn)));
  auto& title = find<QLineEdit>("title");
  EXPECT_FALSE(title.isReadOnly());
  model->select(next);
  bool wasLocked = false;
  EXPECT_TRUE(passUntil([&] {
    wasLocked |= title.isReadOnly();
    return state().selectedArtifact && state().selectedArtifact->id() == next;
  }));
  EXPECT_TRUE(wasLocked);
  pass();
  EXPECT_FALSE(title.isReadOnly());
}

TEST_F(InspectorPaneTest, aPictureThatCannotBeReadLeavesTheRest) {
  ContextArtifactDraft blind = draft(signIn);
  blind.screenshotPNG = "no picture";
  const UUID blindID = store(blind);
  open(blindID);
  EXPECT_EQ("The screenshot cannot be read.", described());
  EXPECT_EQ("window Sign in", ledger().model()->index(0, 0).data().toString());
}

TEST_F(InspectorPaneTest, showsOnlyWhatWasSelectedLast) {
  const UUID first = store(draft(signIn));
  const UUID second = store(draft("window 'Second' frame=0,0,100,100"));
  open(first);
  model->select(second);
  model->select(first);
  waitFor(second);
  EXPECT_EQ("window Second", ledger().model()->index(0, 0).data().toString());
  // The pane may go while it reads.
  model->select(first);
  passUntil([&] { return state().selectedArtifact->id() == first; });
  observation = {};
  pane.reset();
  EXPECT_TRUE(passUntil([&] { return tasks.isEmpty(); }));
}

TEST_F(InspectorPaneTest, everyControlHasANameAndAPlaceInTheTabOrder) {
  open(store(draft(signIn)));
  int count = 0;
  for (int page = 0; page < find<QTabWidget>("pages").count(); ++page) {
    find<QTabWidget>("pages").setCurrentIndex(page);
    for (QWidget* widget : pane->findChildren<QWidget*>()) {
      if (!widget->isVisibleTo(pane.get()) || widget->focusPolicy() == Qt::NoFocus) continue;
      QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
      ASSERT_NE(nullptr, accessible);
      EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty())
          << widget->metaObject()->className() << " " << widget->objectName().toStdString();
      ++count;
    }
  }
  EXPECT_GT(count, 12);
}

}  // namespace
}  // namespace quillo::test
