#include "QuilloApp/Setup/SetupWindow.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "QuilloApp/Interface/QuietText.h"
#include "QuilloApp/Interface/Symbols.h"
#include "QuilloLinux/Keyboard/X11KeyEvent.h"

namespace quillo {
namespace {

constexpr int unit = 8;

QLabel* heading(QWidget* parent, const QString& text) {
  auto* label = new QLabel(text, parent);
  QFont bold = label->font();
  bold.setBold(true);
  label->setFont(bold);
  return label;
}

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

SetupWindow::SetupWindow(QuilloModel& model, TaskGroup& tasks)
    : model_(model), tasks_(tasks), message_(new QLabel(this)), done_(new QPushButton(tr("&Done"), this)) {
  setObjectName(QStringLiteral("setup"));
  setWindowTitle(tr("Setup & Shortcuts"));
  setWindowIcon(applicationIcon());
  setMinimumWidth(60 * unit);

  auto* introduction = new QLabel(tr("Quillo captures the window in front of you, its pixels and its text, and pastes "
                                     "them where a language model reads. Everything stays on this machine."),
                                  this);
  introduction->setWordWrap(true);

  auto* permissions = new QGridLayout;
  permissions->setHorizontalSpacing(unit);
  permissions->setVerticalSpacing(unit);
  permissions->setColumnStretch(1, 1);
  screenRecording_ = makePermissionRow(*permissions, 0, ContextCapturePermission::screenRecording);
  accessibility_ = makePermissionRow(*permissions, 1, ContextCapturePermission::accessibility);
  auto* shortcuts = new QGridLayout;
  shortcuts->setHorizontalSpacing(unit);
  shortcuts->setVerticalSpacing(unit);
  shortcuts->setColumnStretch(0, 1);
  capture_ = makeShortcutRow(*shortcuts, 0, tr("&Capture the frontmost window"), &QuilloHotKeyConfiguration::capture);
  paste_ = makeShortcutRow(*shortcuts, 1, tr("&Paste the selected capture"), &QuilloHotKeyConfiguration::paste);
  message_->setObjectName(QStringLiteral("shortcutMessage"));
  message_->setWordWrap(true);
  message_->setText(QString::fromUtf8(hotKeyRecordingGuidance.data(), hotKeyRecordingGuidance.size()));

  auto* recheck = new QPushButton(symbolIcon("arrow.clockwise"), tr("&Recheck"), this);
  recheck->setObjectName(QStringLiteral("recheck"));
  recheck->setAutoDefault(false);
  connect(recheck, &QPushButton::clicked, this, [this] { model_.recheckCapturePermissions(); });
  done_->setObjectName(QStringLiteral("done"));
  done_->setDefault(true);
  connect(done_, &QPushButton::clicked, this, [this] {
    model_.completeOnboarding();
    close();
  });
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(recheck);
  buttons->addStretch();
  buttons->addWidget(done_);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(3 * unit, 3 * unit, 3 * unit, 2 * unit);
  layout->setSpacing(unit);
  layout->addWidget(introduction);
  layout->addSpacing(unit);
  layout->addWidget(heading(this, tr("Access")));
  layout->addLayout(permissions);
  layout->addSpacing(unit);
  layout->addWidget(heading(this, tr("Shortcuts")));
  layout->addLayout(shortcuts);
  layout->addWidget(message_);
  layout->addSpacing(unit);
  layout->addStretch();
  layout->addLayout(buttons);

  observation_ = model_.observe([this](QuilloModelChanges /*changes*/) { update(); });
  update();
}

SetupWindow::PermissionRow SetupWindow::makePermissionRow(QGridLayout& grid, int row,
                                                          ContextCapturePermission permission) {
  const PermissionRow made{new QLabel(this), new QLabel(this), new QPushButton(this)};
  const QString name = QString::fromStdString(std::string(displayName(permission)));
  made.symbol->setFixedSize(3 * unit, 3 * unit);
  made.button->setText(permission == ContextCapturePermission::accessibility ? tr("&Allow…") : tr("A&llow…"));
  made.button->setAccessibleName(tr("Allow %1").arg(name));
  made.button->setAutoDefault(false);
  connect(made.button, &QPushButton::clicked, this, [this, permission] { request(permission); });
  grid.addWidget(made.symbol, row, 0);
  grid.addWidget(made.text, row, 1);
  grid.addWidget(made.button, row, 2);
  return made;
}

ShortcutButton* SetupWindow::makeShortcutRow(QGridLayout& grid, int row, const QString& name,
                                             QuilloHotKey QuilloHotKeyConfiguration::* member) {
  auto* label = new QLabel(name, this);
  auto* button = new ShortcutButton(this);
  button->setMinimumWidth(20 * unit);
  label->setBuddy(button);
  grid.addWidget(label, row, 0);
  grid.addWidget(button, row, 1);
  connect(button, &ShortcutButton::recordingBegan, this, [this] { model_.beginHotKeyRecording(); });
  connect(button, &ShortcutButton::recordingEnded, this, [this] { model_.endHotKeyRecording(); });
  connect(button, &ShortcutButton::refused, this, [this] {
    message_->setText(QString::fromUtf8(hotKeyRecordingRefusal.data(), hotKeyRecordingRefusal.size()));
  });
  connect(button, &ShortcutButton::recorded, this,
          [this, member](const QuilloHotKey& hotKey) { apply(member, hotKey); });
  return button;
}

void SetupWindow::request(ContextCapturePermission permission) {
  tasks_.start([this, permission]() -> Task<> {
    Task<bool> requesting = model_.requestCapturePermission(permission);
    co_await std::move(requesting);
  });
}

void SetupWindow::apply(QuilloHotKey QuilloHotKeyConfiguration::* member, const QuilloHotKey& hotKey) {
  QuilloHotKeyConfiguration configuration = model_.state().hotKeyConfiguration;
  configuration.*member = hotKey;
  if (const auto refusal = configuration.validationMessage()) {
    message_->setText(QString::fromUtf8(refusal->data(), static_cast<qsizetype>(refusal->size())));
    return;
  }
  const auto result = model_.updateHotKeyConfiguration(configuration);
  message_->setText(result ? tr("Keyboard shortcuts updated")
                           : QString::fromStdString(result.error().errorDescription()));
}

void SetupWindow::present() {
  show();
  raise();
  activateWindow();
}

void SetupWindow::closeEvent(QCloseEvent* event) {
  model_.hideOnboarding();
  event->accept();
}

void SetupWindow::update() {
  const QuilloModelState& state = model_.state();
  const auto showPermission = [](const PermissionRow& row, ContextCapturePermission permission, bool isGranted) {
    const QString name = QString::fromStdString(std::string(displayName(permission)));
    row.symbol->setPixmap(symbolIcon(isGranted ? "checkmark.shield" : "exclamationmark.shield").pixmap(20));
    row.text->setText(isGranted ? tr("%1: Allowed").arg(name) : tr("%1: not allowed yet").arg(name));
    row.button->setVisible(!isGranted);
  };
  showPermission(screenRecording_, ContextCapturePermission::screenRecording,
                 state.capturePermissionState.screenRecordingGranted);
  showPermission(accessibility_, ContextCapturePermission::accessibility,
                 state.capturePermissionState.accessibilityGranted);
  capture_->setShortcutText(QString::fromStdString(state.hotKeyConfiguration.capture.displayString()));
  paste_->setShortcutText(QString::fromStdString(state.hotKeyConfiguration.paste.displayString()));
  if (state.hotKeyRegistrationError) message_->setText(QString::fromStdString(*state.hotKeyRegistrationError));
}

}  // namespace quillo
