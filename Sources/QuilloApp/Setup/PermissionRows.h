#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <array>

#include "QuilloApp/Model/QuilloModel.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

class QGridLayout;

namespace quillo {

/// What Quillo may read, each with its live state and what to do about it.
class PermissionRows : public QWidget {
  Q_OBJECT

 public:
  /// Both outlive the widget's use; `tasks` runs on the main loop.
  PermissionRows(QuilloModel& model, TaskGroup& tasks, QWidget* parent = nullptr);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  struct Row {
    ContextCapturePermission permission{};
    QLabel* symbol = nullptr;
    QLabel* text = nullptr;
    QLabel* advice = nullptr;
    QPushButton* button = nullptr;
  };

  Row makeRow(QGridLayout& grid, ContextCapturePermission permission);
  void request(ContextCapturePermission permission);
  Task<> ask(ContextCapturePermission permission);
  void update();
  void show(Row& row, bool isGranted);

  QuilloModel& model_;
  TaskGroup& tasks_;
  std::array<Row, 2> rows_;
  QuilloModelObservation observation_;
};

}  // namespace quillo
