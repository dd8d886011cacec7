#pragma once

#include <chrono>
#include <cstdint>

#include "QuilloCore/Capture/FrozenContextCaptureTarget.h"
#include "QuilloCore/Capture/WindowScreenshotCapture.h"

namespace quillo::test {

inline constexpr ArtifactRect letterFrame{.x = 1, .y = 2, .width = 300, .height = 200};

/// An editor's window "Letter", frozen.
inline FrozenContextCaptureTarget frozenLetter(std::uint32_t windowID = 11, std::int32_t processIdentifier = 400) {
  FrozenContextCaptureTarget target;
  target.windowID = windowID;
  target.processIdentifier = processIdentifier;
  target.applicationName = "Editor";
  target.windowTitle = "Letter";
  target.windowFrame = letterFrame;
  target.frozenAt = Date(std::chrono::seconds(1'700'000'000));
  return target;
}

/// Its picture.
inline WindowScreenshotCapture screenshotOfLetter(std::uint32_t windowID = 11, std::int32_t processIdentifier = 400) {
  WindowScreenshotCapture capture;
  capture.pngData = "png of the letter";
  capture.window.windowID = windowID;
  capture.window.processIdentifier = processIdentifier;
  capture.window.applicationName = "Editor";
  capture.window.title = "Letter";
  capture.window.frame = letterFrame;
  return capture;
}

}  // namespace quillo::test
