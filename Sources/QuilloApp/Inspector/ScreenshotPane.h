#pragma once

#include <QLabel>
#include <QToolButton>
#include <QWidget>

namespace quillo {

class ScreenshotView;

/// The screenshot, and the controls of its size.
class ScreenshotPane : public QWidget {
  Q_OBJECT

 public:
  explicit ScreenshotPane(QWidget* parent = nullptr);

  ScreenshotView& view() { return *view_; }

 private:
  void update();

  ScreenshotView* view_;
  QToolButton* fit_;
  QToolButton* whole_;
  QToolButton* smaller_;
  QToolButton* larger_;
  QLabel* zoom_;
};

}  // namespace quillo
