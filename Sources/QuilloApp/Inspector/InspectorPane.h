#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QWidget>

#include "QuilloApp/Model/QuilloModel.h"

namespace quillo {

class ScreenshotView;
class Thumbnails;

/// The selected artifact: title, picture, note, and the text that is pasted. Shows the model's drafts and hands every
/// keystroke to it.
class InspectorPane : public QWidget {
  Q_OBJECT

 public:
  InspectorPane(QuilloModel& model, Thumbnails& thumbnails, QWidget* parent = nullptr);

  void update(QuilloModelChanges changes);
  void focusTitle();

  QPushButton& copyButton() { return *copy_; }
  QPushButton& trashButton() { return *trash_; }
  QPushButton& revealButton() { return *reveal_; }

 private:
  void buildTop();
  void updatePreview();
  void updateSaveState();

  QuilloModel& model_;
  QLineEdit* title_;
  QLabel* source_;
  ScreenshotView* screenshot_;
  QPlainTextEdit* note_;
  QLabel* previewSize_;
  QPlainTextEdit* preview_;
  QLabel* saveState_;
  QPushButton* copy_;
  QPushButton* reveal_;
  QPushButton* trash_;
};

/// "2,345 characters, about 590 tokens", and a warning where chat fields may turn the text into an attachment.
QString describePasteText(const QString& text, const QLocale& locale);

}  // namespace quillo
