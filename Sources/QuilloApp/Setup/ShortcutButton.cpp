#include "QuilloApp/Setup/ShortcutButton.h"

#include <QKeyEvent>
#include <utility>

#include "QuilloLinux/Keyboard/X11KeyEvent.h"

namespace quillo {
namespace {

QuilloHotKeyModifiers modifiersOf(Qt::KeyboardModifiers held) {
  QuilloHotKeyModifiers modifiers;
  if (held.testFlag(Qt::ControlModifier)) modifiers |= QuilloHotKeyModifiers::control;
  if (held.testFlag(Qt::AltModifier)) modifiers |= QuilloHotKeyModifiers::option;
  if (held.testFlag(Qt::ShiftModifier)) modifiers |= QuilloHotKeyModifiers::shift;
  if (held.testFlag(Qt::MetaModifier)) modifiers |= QuilloHotKeyModifiers::command;
  return modifiers;
}

bool isModifierKey(int key) {
  return key == Qt::Key_Control || key == Qt::Key_Shift || key == Qt::Key_Alt || key == Qt::Key_Meta ||
         key == Qt::Key_Super_L || key == Qt::Key_Super_R || key == Qt::Key_AltGr;
}

}  // namespace

ShortcutButton::ShortcutButton(QWidget* parent) : QPushButton(parent) {
  setAutoDefault(false);
  connect(this, &QPushButton::clicked, this, [this] {
    isRecording_ = true;
    setText(tr("Type the combination…"));
    setFocus();  // a label's mnemonic presses it from elsewhere
    Q_EMIT recordingBegan();
  });
}

void ShortcutButton::setShortcutText(const QString& text) {
  text_ = text;
  if (!isRecording_) setText(text);
}

void ShortcutButton::stopRecording() {
  if (!std::exchange(isRecording_, false)) return;
  setText(text_);
  Q_EMIT recordingEnded();
}

bool ShortcutButton::event(QEvent* event) {
  // Before the window's own shortcuts and the key that presses a button.
  const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
  if (!isRecording_ || !isKey) return QPushButton::event(event);
  event->accept();
  const auto& key = *static_cast<QKeyEvent*>(event);
  if (event->type() == QEvent::ShortcutOverride || isModifierKey(key.key())) return true;
  if (key.key() == Qt::Key_Escape) {
    stopRecording();
    return true;
  }
  const auto pressed = keyEvent(key.nativeScanCode(), key.nativeVirtualKey(), modifiersOf(key.modifiers()));
  const auto hotKey = pressed ? QuilloHotKey::recorded(*pressed) : std::nullopt;
  if (!hotKey) {
    Q_EMIT refused();
    return true;
  }
  stopRecording();
  Q_EMIT recorded(*hotKey);
  return true;
}

void ShortcutButton::focusOutEvent(QFocusEvent* event) {
  stopRecording();
  QPushButton::focusOutEvent(event);
}

}  // namespace quillo
