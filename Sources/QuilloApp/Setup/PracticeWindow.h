#pragma once

#include <QLabel>
#include <QPlainTextEdit>
#include <QWidget>

namespace quillo {

/// A letter to capture and a field to paste into. Runs in a process of its own, and tells on its output when a capture
/// has been pasted ("pasted COUNT").
class PracticeWindow : public QWidget {
  Q_OBJECT

 public:
  PracticeWindow(const QString& captureKeys, const QString& pasteKeys);

 private:
  void noticePaste();

  QPlainTextEdit* field_;
  QLabel* result_;
};

/// Shows the practice window until it is closed, in an application object that is there already.
int runPracticeWindow(const QStringList& keys);

}  // namespace quillo
