#include <gtest/gtest.h>

#include <QClipboard>
#include <QMimeData>
#include <QSignalSpy>
#include <QTextBlock>
#include <string>
#include <vector>

#include "OffscreenApplication.h"
#include "QuilloApp/Inspector/PastePreview.h"

namespace quillo::test {
namespace {

class PastePreviewTest : public testing::Test {
 protected:
  void finish() {
    for (int turn = 0; turn < 10'000 && !preview_.isComplete(); ++turn) application_.processEvents();
    ASSERT_TRUE(preview_.isComplete());
  }
  /// What one gets by selecting all and copying.
  QString copied() {
    preview_.selectAll();
    preview_.copy();
    return QGuiApplication::clipboard()->mimeData()->text();
  }

  OffscreenApplication application_;
  PastePreview preview_;
};

TEST_F(PastePreviewTest, aLongTextComesPieceByPieceAndIsExactInTheEnd) {
  QString text;
  for (int line = 0; line < 20'000; ++line) text += QStringLiteral("- line %1 – 🙂\n").arg(line);
  preview_.setText(text);
  EXPECT_FALSE(preview_.isComplete());
  EXPECT_LE(preview_.toPlainText().size(), PastePreview::pieceLength) << "the rest waits for its turn";
  finish();
  EXPECT_EQ(text, preview_.toPlainText());

  // A keystroke in the title replaces what differs, and leaves the rest and the place of reading alone.
  QSignalSpy changes(preview_.document(), &QTextDocument::contentsChange);
  const QString edited = QStringLiteral("# Title\n") + text;
  preview_.setText(edited);
  EXPECT_TRUE(preview_.isComplete());
  ASSERT_EQ(1, changes.count());
  EXPECT_LT(changes.front().at(2).toInt(), 16) << "characters that were written anew";
  EXPECT_EQ(edited, preview_.toPlainText());

  // Another artifact, while this one is still being filled in.
  preview_.setText(text + text);
  preview_.setText(QStringLiteral("short"));
  finish();
  EXPECT_EQ("short", preview_.toPlainText());
  preview_.setText(QString());
  EXPECT_EQ("", preview_.toPlainText());
}

TEST_F(PastePreviewTest, aLineThatIsTooLongIsShownInPartsAndCopiedWhole) {
  struct Case {
    const char* label;
    QString text;
  };
  const QString flood(50'000, QLatin1Char('x'));
  QString pairs = QStringLiteral("a");
  for (int count = 0; count < 5000; ++count) pairs += QStringLiteral("🙂");
  for (const Case& each :
       std::vector<Case>{{"one line", flood},
                         {"among others", QStringLiteral("first\n") + flood + QStringLiteral("\nlast")},
                         {"no pair is torn", pairs},
                         {"exactly full", flood.left(PastePreview::longestLine)},
                         {"empty lines", QStringLiteral("\n\n")}}) {
    preview_.setText(each.text);
    finish();
    EXPECT_EQ(each.text, copied()) << each.label;
    for (QTextBlock block = preview_.document()->begin(); block.isValid(); block = block.next()) {
      EXPECT_LE(block.length(), PastePreview::longestLine + 1) << each.label;
      EXPECT_FALSE(!block.text().isEmpty() && block.text().back().isHighSurrogate()) << each.label;
    }
  }
  preview_.setText(QStringLiteral("one\r\ntwo\rthree"));
  EXPECT_EQ("one\ntwo\nthree", preview_.toPlainText());
}

TEST_F(PastePreviewTest, tellsHowLongTheTextIs) {
  const QLocale locale(QLocale::English, QLocale::UnitedStates);
  EXPECT_EQ("0 characters, about 0 tokens.", describePasteText("", locale));
  EXPECT_EQ("5,000 characters, about 1,250 tokens.", describePasteText(std::string(5000, 'x'), locale));
  EXPECT_EQ("5,001 characters, about 1,251 tokens. Chat fields may turn more than 5,000 characters into an attachment.",
            describePasteText(std::string(5001, 'x'), locale));
  EXPECT_EQ("2 characters, about 1 tokens.", describePasteText("é👩‍👩‍👧", locale)) << "as one counts them";
}

}  // namespace
}  // namespace quillo::test
