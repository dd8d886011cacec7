#pragma once

#include <QImage>
#include <memory>
#include <string_view>

#include "ModelFixture.h"
#include "OffscreenApplication.h"
#include "QuilloApp/Inspector/InspectorPane.h"
#include "QuilloApp/Inspector/LedgerPane.h"
#include "QuilloApp/Inspector/ScreenshotView.h"

namespace quillo::test {

/// The pane over the real model and a real library.
class FolioFixture : public ModelFixture {
 public:
  ~FolioFixture() override;

 protected:
  FolioFixture();

  /// A capture of the tree (SnapshotBuilder.h) at two pixels a point, with a picture that shows every frame.
  ContextArtifactDraft draft(std::string_view notation);
  UUID store(const ContextArtifactDraft& draft) { return outsideStore.create(draft).manifest.id; }
  /// Starts the model, shows the artifact, and waits until all of it has been read.
  void open(const UUID& id);
  void waitFor(const UUID& id);
  /// Runs both loops until the condition holds.
  bool passUntil(const std::function<bool()>& condition);
  void pass();

  template <class Widget>
  Widget& find(const char* objectName) {
    auto* found = pane->findChild<Widget*>(QString::fromLatin1(objectName));
    EXPECT_NE(nullptr, found) << objectName;
    return *found;
  }

  OffscreenApplication application;
  TaskGroup tasks{loop.executor()};
  std::unique_ptr<InspectorPane> pane;
  QuilloModelObservation observation;
};

}  // namespace quillo::test
