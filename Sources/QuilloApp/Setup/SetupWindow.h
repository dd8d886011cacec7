#pragma once

#include <QDialog>
#include <QTimer>

#include "QuilloApp/Model/QuilloModel.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

namespace quillo {

/// The window of the settings, and of the guide until that has been completed. What it shows follows the desktop while
/// it is open.
class SetupWindow : public QDialog {
  Q_OBJECT

 public:
  /// Both outlive the window's use; `tasks` runs on the main loop.
  SetupWindow(QuilloModel& model, TaskGroup& tasks);

  void present();
  /// Escape closes it, as its frame does.
  void reject() override { close(); }

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QWidget* makeSettingsPage(TaskGroup& tasks);
  QWidget* makeGuidePage();
  void showSettings();
  void showGuide();
  void growToFit();
  void complete();
  void refresh();

  QuilloModel& model_;
  TaskGroup& tasks_;
  QWidget* settings_;
  QWidget* guide_ = nullptr;  ///< made anew whenever it is begun
  QTimer recheck_;
};

}  // namespace quillo
