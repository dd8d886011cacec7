#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>

#include "QuilloApp/Model/QuilloModel.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

class QGridLayout;

namespace quillo {

/// A button that shows a shortcut and, once pressed, takes the next combination for a new one. Escape keeps the old.
class ShortcutButton : public QPushButton {
  Q_OBJECT

 public:
  explicit ShortcutButton(QWidget* parent = nullptr);

  void setShortcutText(const QString& text);
  void stopRecording();

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

/// What Quillo needs of the desktop, and its two shortcuts. Also the guide of the first run.
class SetupWindow : public QDialog {
  Q_OBJECT

 public:
  /// Both outlive the window's use; `tasks` runs on the main loop.
  SetupWindow(QuilloModel& model, TaskGroup& tasks);

  void present();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  struct PermissionRow {
    QLabel* symbol;
    QLabel* text;
    QPushButton* button;
  };

  PermissionRow makePermissionRow(QGridLayout& grid, int row, ContextCapturePermission permission);
  ShortcutButton* makeShortcutRow(QGridLayout& grid, int row, const QString& name,
                                  QuilloHotKey QuilloHotKeyConfiguration::* member);
  void request(ContextCapturePermission permission);
  void apply(QuilloHotKey QuilloHotKeyConfiguration::* member, const QuilloHotKey& hotKey);
  void update();

  QuilloModel& model_;
  TaskGroup& tasks_;
  PermissionRow screenRecording_{};
  PermissionRow accessibility_{};
  ShortcutButton* capture_ = nullptr;
  ShortcutButton* paste_ = nullptr;
  QLabel* message_;
  QPushButton* done_;
  QuilloModelObservation observation_;
};

}  // namespace quillo
