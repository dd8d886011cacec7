#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QStackedWidget>
#include <functional>

#include "QuilloApp/Model/QuilloModel.h"

namespace quillo {

class ArtifactListModel;
class InspectorPane;
class Thumbnails;

/// The library: the feed of captures, the inspector of the selected one, and what the application is doing.
class LibraryWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// What the window asks of the application around it.
  struct Requests {
    std::function<void()> openSetup;
    std::function<void()> quit;
    std::function<bool()> closingQuits;  ///< whether the window is the application's only home
  };

  /// Model and pictures outlive the window.
  LibraryWindow(QuilloModel& model, Thumbnails& thumbnails, Requests requests);
  ~LibraryWindow() override;

  /// Brings the window to the user, wherever it is.
  void present();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* makeFeed();
  QWidget* makeEmptyPage();
  void makeMenus();
  void connectControls();
  void update(QuilloModelChanges changes);
  void updateRows();
  void updateSelection();
  void updateActivity();
  void updatePages();
  void moveSelectedToTrash();

  QuilloModel& model_;
  Requests requests_;
  ArtifactListModel* rows_;
  QLineEdit* search_;
  QListView* list_;
  QLabel* count_;
  QStackedWidget* pages_;
  QLabel* emptySymbol_;
  QLabel* emptyTitle_;
  QLabel* emptyText_;
  InspectorPane* inspector_;
  QLabel* activitySymbol_;
  QLabel* activity_;
  QList<QAction*> selectionActions_;
  bool isUpdating_ = false;
  QuilloModelObservation observation_;
};

}  // namespace quillo
