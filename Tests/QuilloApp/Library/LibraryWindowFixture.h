#pragma once

#include <QString>
#include <memory>
#include <string>
#include <vector>

#include "ModelFixture.h"
#include "OffscreenApplication.h"
#include "QuilloApp/Interface/MainLoop.h"
#include "QuilloApp/Interface/QtThumbnailDecoder.h"
#include "QuilloApp/Interface/Thumbnails.h"
#include "QuilloApp/Library/CaptureList.h"
#include "QuilloApp/Library/LibraryWindow.h"
#include "QuilloCore/Concurrency/WorkerPool.h"

namespace quillo::test {

/// The library's window over a real model, drawn into memory.
class LibraryWindowFixture : public ModelFixture {
 public:
  ~LibraryWindowFixture() override;

 protected:
  explicit LibraryWindowFixture(int pixelsPerPoint = 1);

  /// Six captures of three applications over three days.
  void storeSome();

  /// Starts the model and shows the window.
  void open();
  void showWindow();
  void settleAll();
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

  template <class Widget>
  Widget& named(const char* name) {
    auto* widget = window->findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(nullptr, widget) << name;
    return *widget;
  }
  CaptureList& list() { return named<CaptureList>("captures"); }

  /// The titles in the list, without its days.
  std::vector<std::string> shown();
  std::vector<UUID> selected();

  std::vector<UUID> ids;

 private:
  OffscreenApplication application_;
  MainLoop decoding_;
  WorkerPool workers_;
  QtThumbnailDecoder decoder_;
  ArtifactThumbnailCache cache_{decoder_, workers_};
  TaskGroup decodes_{decoding_.executor()};
  Thumbnails thumbnails_{cache_, decodes_};

 protected:
  std::unique_ptr<LibraryWindow> window;
};

}  // namespace quillo::test
