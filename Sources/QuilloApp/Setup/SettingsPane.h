#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QWidget>

#include "QuilloApp/Model/QuilloModel.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

namespace quillo {

/// Everything that can be set: access, shortcuts, start at login, the captures' place, updates.
class SettingsPane : public QWidget {
  Q_OBJECT

 public:
  /// Both outlive the widget's use; `tasks` runs on the main loop.
  SettingsPane(QuilloModel& model, TaskGroup& tasks, QWidget* parent = nullptr);

 private:
  QWidget* makeStorageRow();
  void update();

  QuilloModel& model_;
  QCheckBox* startsAtLogin_;
  QLabel* libraryPath_ = nullptr;
  QLabel* librarySize_ = nullptr;
  QuilloModelObservation observation_;
};

}  // namespace quillo
