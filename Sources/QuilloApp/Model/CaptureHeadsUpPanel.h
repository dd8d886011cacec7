#pragma once

#include <memory>
#include <optional>
#include <string>

#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// What the panel says of a capture that runs or is done.
struct CaptureNotice {
  std::string title;                                 ///< the artifact's, or what it will be
  std::string applicationName;                       ///< of the captured window
  std::string detail;                                ///< "812 elements, complete"; empty while the capture runs
  ArtifactRect windowFrame;                          ///< of the captured window: the panel appears on its screen
  std::shared_ptr<const std::string> screenshotPNG;  ///< the bytes of the picture; never null

  friend bool operator==(const CaptureNotice&, const CaptureNotice&) = default;
};

/// What the panel says of a capture that failed.
struct CaptureFailureNotice {
  std::string message;
  std::optional<std::string> remedy;
  std::optional<ArtifactRect> windowFrame;  ///< absent when no window could be frozen

  friend bool operator==(const CaptureFailureNotice&, const CaptureFailureNotice&) = default;
};

/// The small panel that tells how a capture goes. It takes no focus, lets clicks through, and is announced to screen
/// readers. Called on the main thread; each call replaces what is shown. Progress comes only after the window's pixels
/// have been taken, so that the panel is not on them.
class CaptureHeadsUpPanel {
 public:
  virtual ~CaptureHeadsUpPanel() = default;

  virtual void showProgress(const CaptureNotice& notice) = 0;
  virtual void showSuccess(const CaptureNotice& notice) = 0;
  virtual void showFailure(const CaptureFailureNotice& notice) = 0;
  virtual void hide() = 0;
};

}  // namespace quillo
