#pragma once

#include <QList>
#include <QLocale>
#include <QPlainTextEdit>
#include <QString>
#include <QTimer>
#include <string_view>

namespace quillo {

/// "2,345 characters, about 590 tokens", and a warning where chat fields may turn the text into an attachment.
QString describePasteText(std::string_view text, const QLocale& locale);

/// A read-only text of any length that never holds up the interface: a long one is filled in a piece a turn of the
/// event loop, a change replaces only what differs. Lines that are too long to be laid out at once are shown in parts;
/// what is copied is the exact text all the same.
class PastePreview : public QPlainTextEdit {
  Q_OBJECT

 public:
  static constexpr qsizetype pieceLength = 16'384;  ///< UTF-16 units a turn
  static constexpr qsizetype longestLine = 4096;    ///< UTF-16 units

  explicit PastePreview(QWidget* parent = nullptr);

  void setText(const QString& exact);
  /// Whether all of it is shown.
  bool isComplete() const { return shownLength_ == text_.size(); }

 protected:
  QMimeData* createMimeDataFromSelection() const override;

 private:
  void insertPiece();
  void replaceMiddle(qsizetype begin, qsizetype end, const QString& replacement);

  QString text_;             ///< with the breaks of lines that are too long
  QList<qsizetype> breaks_;  ///< their positions in `text_`, ascending
  qsizetype shownLength_ = 0;
  QTimer filling_;
};

}  // namespace quillo
