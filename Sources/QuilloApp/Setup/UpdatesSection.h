#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include "QuilloApp/Model/QuilloModel.h"

namespace quillo {

/// What is known of updates, and what the user wants done about them.
class UpdatesSection : public QWidget {
  Q_OBJECT

 public:
  /// The model outlives the widget's use.
  explicit UpdatesSection(QuilloModel& model, QWidget* parent = nullptr);

 private:
  void update();
  void act();
  QString statusText() const;
  QString lastCheckText() const;

  QuilloModel& model_;
  QLabel* status_;
  QLabel* lastCheck_;
  QPushButton* check_;
  QPushButton* action_;  ///< downloads, installs or stops, whichever comes next
  QCheckBox* checksAutomatically_;
  QCheckBox* downloadsAutomatically_;
  QuilloModelObservation observation_;
};

}  // namespace quillo
