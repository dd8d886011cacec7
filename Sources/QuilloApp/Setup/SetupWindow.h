#pragma once

#include <QDialog>
#include <QTimer>

#include "QuilloApp/Model/QuilloModel.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

namespace quillo {

/// The window of the settings. What it shows follows the desktop while it is open.
class SetupWindow : public QDialog {
  Q_OBJECT

 public:
  /// Both outlive the window's use; `tasks` runs on the main loop.
  SetupWindow(QuilloModel& model, TaskGroup& tasks);

  void present();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void refresh();

  QuilloModel& model_;
  QTimer recheck_;
};

}  // namespace quillo
