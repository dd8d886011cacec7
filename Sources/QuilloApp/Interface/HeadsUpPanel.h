#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "QuilloApp/Model/CaptureHeadsUpPanel.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

namespace quillo {

/// The panel as a window of its own, which the window manager does not know and the pointer goes through.
class HeadsUpPanel final : public CaptureHeadsUpPanel {
 public:
  /// Pictures are decoded on the worker's queues; `tasks` runs on the main loop and ends before this.
  HeadsUpPanel(TaskGroup& tasks, std::function<TaskExecutor()> makeWorkerExecutor);
  ~HeadsUpPanel() override;

  void showProgress(const CaptureNotice& notice) override;
  void showSuccess(const CaptureNotice& notice) override;
  void showFailure(const CaptureFailureNotice& notice) override;
  void hide() override;

 private:
  class Window;

  Window& window();
  void loadPicture(const std::shared_ptr<const std::string>& png);
  Task<> showPicture(std::shared_ptr<const std::string> png);

  TaskGroup& tasks_;
  std::function<TaskExecutor()> makeWorkerExecutor_;
  std::unique_ptr<Window> window_;
  std::shared_ptr<const std::string> shownPNG_;
};

}  // namespace quillo
