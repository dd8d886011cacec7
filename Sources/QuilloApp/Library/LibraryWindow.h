#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QStackedWidget>
#include <functional>

#include "QuilloApp/Model/QuilloModel.h"

namespace quillo {

class ElidedLabel;
class FeedPane;
class InspectorPane;
class MessagePage;
class QuickLook;
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
  void changeEvent(QEvent* event) override;

 private:
  void makeMenus();
  void connectControls();
  void update(QuilloModelChanges changes);
  void colorDivider();
  void updateUndo();
  void updateActivity();
  void updatePages();
  void moveSelectedToTrash();
  void toggleQuickLook();

  QuilloModel& model_;
  Thumbnails& thumbnails_;
  Requests requests_;
  FeedPane* feed_;
  QStackedWidget* pages_;
  QWidget* divider_ = nullptr;
  MessagePage* message_;
  InspectorPane* inspector_;
  QLabel* activitySymbol_;
  ElidedLabel* activity_;
  QPushButton* undo_;
  QAction* undoAction_ = nullptr;
  QuickLook* quickLook_ = nullptr;
  QList<QAction*> selectionActions_;
  QuilloModelObservation observation_;
};

}  // namespace quillo
