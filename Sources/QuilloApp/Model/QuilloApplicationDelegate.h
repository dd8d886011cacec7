#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "QuilloApp/Model/StatusMenu.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

namespace quillo {

class QuilloModel;

enum class TerminationReply : std::uint8_t { now, later };

/// Routes what the desktop asks of the application (its menu, its end) to the model. Main thread only.
class QuilloApplicationDelegate {
 public:
  static constexpr const char* statusItemToolTip = "Quillo — capture the frontmost window with context";
  static constexpr const char* statusItemDescription = "Open capture controls and recent artifact actions";

  /// What only the interface can do.
  struct Openers {
    std::function<void()> openLibrary;
    std::function<void()> quit;  ///< asks for the application's end, as the desktop would
  };

  explicit QuilloApplicationDelegate(TaskExecutor mainExecutor);

  /// The model outlives the delegate's use; its `prepareForTermination` is what quitting waits for.
  void installMenuBarUtility(QuilloModel& model, Openers openers);

  /// To be called when the menu is about to open: freezes what was in front, and tells what the menu shows.
  std::vector<StatusMenuEntry> menuWillOpen();
  void perform(StatusMenuAction action);

  /// Asked whether the application may quit. After `later`, `answer` is called once with the decision; whoever asks
  /// again meanwhile gets the same decision.
  TerminationReply applicationShouldTerminate(std::function<void(bool)> answer);
  bool terminationIsPending() const { return terminationIsPending_; }

  /// In place of the model's, for an application that has something else to finish.
  void setPrepareForTermination(std::function<Task<bool>()> prepareForTermination);

  /// Waits for what the delegate has begun.
  Task<> shutDown();

 private:
  Task<> awaitTermination();
  Task<> openSettings(ContextCapturePermission permission);

  TaskGroup tasks_;
  std::function<Task<bool>()> prepareForTermination_;
  bool terminationIsPending_ = false;
  std::vector<std::function<void(bool)>> answers_;
  QuilloModel* model_ = nullptr;
  Openers openers_;
};

}  // namespace quillo
