#pragma once

#include <QPushButton>

#include "QuilloCore/Shortcuts/QuilloHotKey.h"

namespace quillo {

/// A button that shows a shortcut and, once pressed, takes the next combination for a new one. Escape keeps the old.
class ShortcutButton : public QPushButton {
  Q_OBJECT

 public:
  explicit ShortcutButton(QWidget* parent = nullptr);

  void setShortcutText(const QString& text);
  void stopRecording();
  bool isRecording() const { return isRecording_; }

 Q_SIGNALS:
  void recordingBegan();
  void recordingEnded();
  void recorded(const quillo::QuilloHotKey& hotKey);
  void refused();

 protected:
  bool event(QEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  QString text_;
  bool isRecording_ = false;
};

}  // namespace quillo
