#pragma once

#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QWidget>
#include <array>

#include "QuilloApp/Model/QuilloModel.h"
#include "QuilloApp/Setup/GuideProgress.h"
#include "QuilloApp/Setup/PracticeProcess.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

class QBoxLayout;

namespace quillo {

/// The first-run guide: four steps, each with a line that says by itself whether it is done.
class GuidePane : public QWidget {
  Q_OBJECT

 public:
  /// Both outlive the widget's use; `tasks` runs on the main loop.
  GuidePane(QuilloModel& model, TaskGroup& tasks, QWidget* parent = nullptr);

 Q_SIGNALS:
  void skipped();
  void finished();
  /// A capture or a paste has been noticed while another window was in front.
  void attentionWanted();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  struct Page {
    QLabel* mark = nullptr;    ///< in the row of steps
    QLabel* name = nullptr;    ///< beside it
    QLabel* symbol = nullptr;  ///< before the state
    QLabel* state = nullptr;
    QPushButton* practice = nullptr;  ///< opens the practice window, where there is one
  };

  Page addPage(QBoxLayout& row, const QString& name, const QString& title, const QString& text, QWidget* contents);
  QPushButton* addPracticeButton(QWidget* contents) const;
  void openPractice();
  void go(std::size_t step);
  void update();
  QString stateText(GuideStep step) const;

  QuilloModel& model_;
  GuideProgress progress_;
  PracticeProcess practice_;
  QStackedWidget* pages_;
  std::array<Page, GuideProgress::steps.size()> steps_;
  QPushButton* skip_;
  QPushButton* back_;
  QPushButton* next_;
  QuilloModelObservation observation_;
};

}  // namespace quillo
