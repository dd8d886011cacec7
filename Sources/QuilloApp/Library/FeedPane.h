#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QWidget>

#include "QuilloApp/Model/QuilloModel.h"

namespace quillo {

class ArtifactListModel;
class CaptureList;
class ElidedLabel;
class Thumbnails;

/// The feed: search, application filter, and the list of captures by day. Of the captures that are selected here the
/// current one is the model's selection.
class FeedPane : public QWidget {
  Q_OBJECT

 public:
  /// Model and pictures outlive the pane.
  FeedPane(QuilloModel& model, Thumbnails& thumbnails, QWidget* parent = nullptr);

  void update(QuilloModelChanges changes);

  CaptureList& list() { return *list_; }
  /// In the order of the list.
  std::vector<UUID> selectedIds() const;
  /// Of the current capture; empty when there is none.
  QString currentTitle() const;
  QString currentScreenshotPath() const;

  void focusSearch();
  /// Shows everything again.
  void clearSearch();

 Q_SIGNALS:
  void currentChanged();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void makeControls();
  void makeCountQuiet();
  void connectControls();
  void updateRows();
  void updateFilter();
  void updateSelection();
  void updateCount();
  void updateMessage();
  void enterList();

  QuilloModel& model_;
  ArtifactListModel* rows_;
  QLineEdit* search_;
  QComboBox* filter_;
  ElidedLabel* count_;
  QStackedWidget* pages_;
  CaptureList* list_;
  QLabel* message_;
  QPushButton* showAll_;
  std::size_t shownCount_ = 0;
  bool isUpdating_ = false;
};

}  // namespace quillo
