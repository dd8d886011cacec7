#include "QuilloApp/Inspector/PastePreview.h"

#include <QFontDatabase>
#include <QMimeData>
#include <QTextCursor>
#include <algorithm>
#include <cstdint>
#include <utility>

#include "QuilloApp/Interface/Translations.h"
#include "QuilloCore/Support/GraphemeClusters.h"

namespace quillo {
namespace {

constexpr std::int64_t attachmentLimit = 5000;  ///< characters from which chat fields have been seen to do so
constexpr std::int64_t charactersPerToken = 4;  ///< what language models' own counts come to in English text

struct BrokenText {
  QString text;
  QList<qsizetype> breaks;
};

BrokenText breakLongLines(const QString& exact) {
  BrokenText broken;
  qsizetype lineBegin = 0;
  while (lineBegin <= exact.size()) {
    qsizetype lineEnd = exact.indexOf(QLatin1Char('\n'), lineBegin);
    if (lineEnd < 0) lineEnd = exact.size();
    while (lineEnd - lineBegin > PastePreview::longestLine) {
      qsizetype length = PastePreview::longestLine;
      if (exact[lineBegin + length].isLowSurrogate()) --length;
      broken.text += QStringView(exact).mid(lineBegin, length);
      broken.breaks << broken.text.size();
      broken.text += QLatin1Char('\n');
      lineBegin += length;
    }
    broken.text += QStringView(exact).mid(lineBegin, lineEnd - lineBegin);
    if (lineEnd < exact.size()) broken.text += QLatin1Char('\n');
    lineBegin = lineEnd + 1;
  }
  return broken;
}

}  // namespace

QString describePasteText(std::string_view text, const QLocale& locale) {
  const std::int64_t count = countGraphemeClusters(text);
  const std::int64_t tokens = (count + charactersPerToken - 1) / charactersPerToken;
  QString words =
      PastePreview::tr("%1 characters, about %2 tokens.", nullptr, pluralNumber(count))
          .arg(locale.toString(static_cast<qlonglong>(count)), locale.toString(static_cast<qlonglong>(tokens)));
  if (count > attachmentLimit)
    words += QLatin1Char(' ') + PastePreview::tr("Chat fields may turn more than %1 characters into an attachment.",
                                                 nullptr, pluralNumber(attachmentLimit))
                                    .arg(locale.toString(static_cast<qlonglong>(attachmentLimit)));
  return words;
}

PastePreview::PastePreview(QWidget* parent) : QPlainTextEdit(parent) {
  setReadOnly(true);
  setTabChangesFocus(true);
  setUndoRedoEnabled(false);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  filling_.setInterval(0);
  connect(&filling_, &QTimer::timeout, this, &PastePreview::insertPiece);
}

void PastePreview::setText(const QString& exact) {
  // The document counts each of these as one place, and a pair of them would be one too.
  QString plain = exact;
  plain.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
  BrokenText broken = breakLongLines(plain);
  if (broken.text == text_) return;
  const QStringView shown = QStringView(text_).left(shownLength_);
  const auto common = std::mismatch(shown.begin(), shown.end(), broken.text.cbegin(), broken.text.cend());
  const qsizetype prefix = common.first - shown.begin();
  qsizetype suffix = 0;
  if (isComplete()) {
    const qsizetype room = std::min(text_.size(), broken.text.size()) - prefix;
    while (suffix < room && text_[text_.size() - 1 - suffix] == broken.text[broken.text.size() - 1 - suffix]) ++suffix;
  }
  const qsizetype length = broken.text.size() - prefix - suffix;
  const bool isSmallChange = isComplete() && length <= pieceLength;
  const qsizetype shownEnd = isSmallChange ? shownLength_ - suffix : shownLength_;
  if (prefix == 0 && suffix == 0) {
    clear();
  } else {
    replaceMiddle(prefix, shownEnd, isSmallChange ? broken.text.mid(prefix, length) : QString());
  }
  shownLength_ = isSmallChange && (prefix > 0 || suffix > 0) ? broken.text.size() : prefix;
  text_ = std::move(broken.text);
  breaks_ = std::move(broken.breaks);
  if (!isComplete()) insertPiece();
}

void PastePreview::replaceMiddle(qsizetype begin, qsizetype end, const QString& replacement) {
  QTextCursor cursor(document());
  cursor.setPosition(static_cast<int>(begin));
  cursor.setPosition(static_cast<int>(end), QTextCursor::KeepAnchor);
  cursor.insertText(replacement);
}

void PastePreview::insertPiece() {
  const QString piece = text_.mid(shownLength_, pieceLength);
  QTextCursor cursor(document());
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(piece);
  shownLength_ += piece.size();
  if (isComplete()) {
    filling_.stop();
  } else if (!filling_.isActive()) {
    filling_.start();
  }
}

QMimeData* PastePreview::createMimeDataFromSelection() const {
  const QTextCursor cursor = textCursor();
  const qsizetype begin = cursor.selectionStart();
  QString selected;
  qsizetype from = begin;
  for (const qsizetype position : breaks_) {
    if (position < begin) continue;
    if (position >= cursor.selectionEnd()) break;
    selected += QStringView(text_).mid(from, position - from);
    from = position + 1;
  }
  selected += QStringView(text_).mid(from, cursor.selectionEnd() - from);
  auto* data = new QMimeData;
  data->setText(selected);
  return data;
}

}  // namespace quillo
