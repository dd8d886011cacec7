#pragma once

#include <memory>
#include <optional>

#include "FileManager.h"
#include "QuilloApp/Interface/HeadsUpPanel.h"
#include "QuilloApp/Interface/MainLoop.h"
#include "QuilloApp/Interface/QtThumbnailDecoder.h"
#include "QuilloApp/Interface/SessionInstance.h"
#include "QuilloApp/Interface/StatusItem.h"
#include "QuilloApp/Interface/Thumbnails.h"
#include "QuilloApp/Library/LibraryWindow.h"
#include "QuilloApp/Model/QuilloApplicationDelegate.h"
#include "QuilloApp/Model/QuilloModel.h"
#include "QuilloApp/Services/ApplicationPlatform.h"
#include "QuilloApp/Services/ApplicationServices.h"
#include "QuilloApp/Setup/SetupWindow.h"
#include "QuilloCore/Artifacts/ArtifactThumbnailCache.h"
#include "QuilloCore/Concurrency/TaskGroup.h"
#include "QuilloLinux/Desktop/LibraryWatcher.h"

namespace quillo {

/// The application from its start to its end: services, model and interface, in the order in which they need each
/// other.
class QuilloApp {
 public:
  /// What the platform names outlives this.
  QuilloApp(MainLoop& loop, const ApplicationPlatform& platform);
  QuilloApp(const QuilloApp&) = delete;
  QuilloApp& operator=(const QuilloApp&) = delete;
  /// Cancels what runs, and waits for its end.
  ~QuilloApp();

  void start(LaunchRequest request);
  /// What a later start asks for.
  void perform(LaunchRequest request);

  /// Quits once everything is saved; stays when that fails.
  void requestQuit();

  /// Saves what is not saved yet, without the event loop: for a session or a display that ends now. Returns whether
  /// quitting may proceed.
  bool finishNow();
  /// The same for a session that may go on after all: everything may begin again afterwards.
  bool saveForSession();

 private:
  void openLibrary();
  void modelChanged(QuilloModelChanges changes);
  Task<> performFirst(LaunchRequest request);
  Task<> endTasks();

  MainLoop& loop_;
  ApplicationServices services_;
  TaskGroup tasks_;
  FileManager fileManager_;
  HeadsUpPanel headsUpPanel_;
  QtThumbnailDecoder decoder_;
  ArtifactThumbnailCache thumbnailCache_;
  QuilloModel model_;
  QuilloApplicationDelegate delegate_;
  Thumbnails thumbnails_;
  std::unique_ptr<LibraryWindow> library_;
  std::unique_ptr<SetupWindow> setup_;
  std::unique_ptr<StatusItem> statusItem_;
  LibraryWatcher watcher_;
  QuilloModelObservation observation_;
  bool libraryFollowsGuide_ = false;  ///< when the first run's guide ends
};

}  // namespace quillo
